#include "formats/chart_presentation_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace orvik::formats {

namespace {

using shell::AxisPresentation;
using shell::ChartPresentation;
using shell::SeriesPresentation;

// Series beyond this index are refused: no chart draws so many.
constexpr long kMaxSeries = 1000;

std::string Escaped(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (c == '\\') out += "\\\\";
    else if (c == '\n') out += "\\n";
    else out += c;
  }
  return out;
}

std::optional<std::string> Unescaped(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      out += text[i];
      continue;
    }
    if (++i == text.size()) return std::nullopt;
    if (text[i] == 'n') out += '\n';
    else if (text[i] == '\\') out += '\\';
    else return std::nullopt;
  }
  return out;
}

std::string Number(double value) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.17g", value);
  return buffer;
}

std::optional<double> ParseDouble(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<long> ParseWhole(std::string_view text, long low, long high) {
  long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value < low || value > high) return std::nullopt;
  return value;
}

class Writer {
 public:
  void Put(const std::string& key, const std::string& value) { text_ += key + '=' + value + '\n'; }
  void Text(const std::string& key, const std::optional<std::string>& value) {
    if (value) Put(key, Escaped(*value));
  }
  void Whole(const std::string& key, long value, long fallback) {
    if (value != fallback) Put(key, std::to_string(value));
  }
  void Real(const std::string& key, const std::optional<double>& value) {
    if (value) Put(key, Number(*value));
  }
  void Color(const std::string& key, const std::optional<shell::Rgb>& value) {
    if (value) Put(key, std::to_string(value->value));
  }
  template <typename Enum>
  void Choice(const std::string& key, const std::optional<Enum>& value) {
    if (value) Put(key, std::to_string(static_cast<int>(*value)));
  }
  void Axis(const std::string& prefix, const AxisPresentation& axis) {
    Text(prefix + "title", axis.title);
    if (axis.fixedRange) {
      Put(prefix + "min", Number(axis.minimum));
      Put(prefix + "max", Number(axis.maximum));
    }
    Whole(prefix + "log", axis.logScale, 0);
    Whole(prefix + "decimals", axis.decimals, -1);
  }
  std::string Result() const { return text_; }

 private:
  std::string text_;
};

}  // namespace

std::string PresentationText(const ChartPresentation& p) {
  const ChartPresentation defaults;
  Writer w;
  w.Text("title", p.title);
  w.Axis("x.", p.x);
  w.Axis("y.", p.y);
  if (!p.fontFamily.empty()) w.Put("font", Escaped(p.fontFamily));
  w.Whole("title_size", p.titleSize, defaults.titleSize);
  w.Whole("axis_title_size", p.axisTitleSize, defaults.axisTitleSize);
  w.Whole("tick_size", p.tickLabelSize, defaults.tickLabelSize);
  w.Whole("grid", p.gridLines, defaults.gridLines);
  w.Whole("legend", static_cast<long>(p.legend), static_cast<long>(defaults.legend));
  w.Color("limit_color", p.limitColor);
  w.Choice("limit_style", p.limitStyle);
  w.Whole("limit_decimals", p.limitDecimals, defaults.limitDecimals);
  for (std::size_t i = 0; i < p.series.size(); ++i) {
    const SeriesPresentation& s = p.series[i];
    const std::string prefix = "s" + std::to_string(i) + ".";
    w.Color(prefix + "line_color", s.lineColor);
    w.Real(prefix + "line_width", s.lineWidth);
    w.Choice(prefix + "line_style", s.lineStyle);
    w.Choice(prefix + "marker", s.marker);
    w.Real(prefix + "marker_size", s.markerSize);
    w.Color(prefix + "marker_color", s.markerColor);
    if (s == SeriesPresentation{}) w.Put(prefix + "plain", "1");  // keeps the series count
  }
  return w.Result();
}

std::optional<ChartPresentation> ParsePresentation(std::string_view text) {
  ChartPresentation p;
  bool ok = true;
  const auto whole = [&ok](std::string_view v, long low, long high) {
    const auto value = ParseWhole(v, low, high);
    ok = ok && value.has_value();
    return value.value_or(low);
  };
  const auto real = [&ok](std::string_view v) {
    const auto value = ParseDouble(v);
    ok = ok && value.has_value();
    return value.value_or(0.0);
  };
  const auto words = [&ok](std::string_view v) {
    const auto value = Unescaped(v);
    ok = ok && value.has_value();
    return value.value_or(std::string());
  };
  const auto color = [&](std::string_view v) { return shell::Rgb{static_cast<std::uint32_t>(whole(v, 0, 0xFFFFFF))}; };
  const auto axis = [&](AxisPresentation& a, std::string_view key, std::string_view v) {
    if (key == "title") a.title = words(v);
    else if (key == "min") a.fixedRange = true, a.minimum = real(v);
    else if (key == "max") a.fixedRange = true, a.maximum = real(v);
    else if (key == "log") a.logScale = whole(v, 0, 1) != 0;
    else if (key == "decimals") a.decimals = static_cast<int>(whole(v, -1, 15));
  };
  while (!text.empty() && ok) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return std::nullopt;
    const std::string_view key = line.substr(0, equals), v = line.substr(equals + 1);
    if (key == "title") p.title = words(v);
    else if (key.substr(0, 2) == "x.") axis(p.x, key.substr(2), v);
    else if (key.substr(0, 2) == "y.") axis(p.y, key.substr(2), v);
    else if (key == "font") p.fontFamily = words(v);
    else if (key == "title_size") p.titleSize = static_cast<int>(whole(v, 4, 200));
    else if (key == "axis_title_size") p.axisTitleSize = static_cast<int>(whole(v, 4, 200));
    else if (key == "tick_size") p.tickLabelSize = static_cast<int>(whole(v, 4, 200));
    else if (key == "grid") p.gridLines = whole(v, 0, 1) != 0;
    else if (key == "legend") p.legend = static_cast<shell::LegendPlace>(whole(v, 0, 6));
    else if (key == "limit_color") p.limitColor = color(v);
    else if (key == "limit_style") p.limitStyle = static_cast<shell::LineStyle>(whole(v, 0, 4));
    else if (key == "limit_decimals") p.limitDecimals = static_cast<int>(whole(v, -1, 15));
    else if (key.size() > 1 && key[0] == 's' && key.find('.') != std::string_view::npos) {
      const std::size_t dot = key.find('.');
      const long index = whole(key.substr(1, dot - 1), 0, kMaxSeries);
      if (!ok) break;
      if (p.series.size() <= static_cast<std::size_t>(index)) p.series.resize(static_cast<std::size_t>(index) + 1);
      SeriesPresentation& s = p.series[static_cast<std::size_t>(index)];
      const std::string_view field = key.substr(dot + 1);
      if (field == "line_color") s.lineColor = color(v);
      else if (field == "line_width") s.lineWidth = real(v);
      else if (field == "line_style") s.lineStyle = static_cast<shell::LineStyle>(whole(v, 0, 4));
      else if (field == "marker") s.marker = static_cast<shell::MarkerShape>(whole(v, 0, 8));
      else if (field == "marker_size") s.markerSize = real(v);
      else if (field == "marker_color") s.markerColor = color(v);
    }
    // Other keys come from newer versions of the program and are skipped.
  }
  if (!ok) return std::nullopt;
  return p;
}

}  // namespace orvik::formats
