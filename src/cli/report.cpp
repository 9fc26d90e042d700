#include "cli/report.h"

#include <algorithm>
#include <sstream>

#include "cli/json_writer.h"
#include "stats/decimal_numbers.h"

namespace orvik::cli {

namespace {

const char* SeriesTypeName(shell::SeriesType type) {
  switch (type) {
    case shell::SeriesType::Line: return "line";
    case shell::SeriesType::Points: return "points";
    case shell::SeriesType::Bar: return "bar";
    case shell::SeriesType::Box: return "box";
    case shell::SeriesType::Pie: return "pie";
    case shell::SeriesType::Radar: return "radar";
    case shell::SeriesType::Area: return "area";
  }
  return "line";
}

void WriteMessages(JsonWriter& json, const std::vector<shell::MessageBox>& messages) {
  json.Key("messages").BeginArray();
  for (const auto& box : messages) {
    json.BeginObject()
        .Field("title", box.title)
        .Field("text", box.text)
        .Field("icon", shell::IconName(box.icon))
        .Field("buttons", shell::ButtonsName(box.buttons))
        .EndObject();
  }
  json.EndArray();
}

void WriteChart(JsonWriter& json, const shell::ChartSeries& chart) {
  json.BeginObject().Field("name", chart.name).Field("title", chart.title);
  json.Field("xTitle", chart.xTitle).Field("yTitle", chart.yTitle);
  json.Key("series").BeginArray();
  for (const auto& series : chart.series) {
    json.BeginObject().Field("name", series.name).Field("type", SeriesTypeName(series.type));
    json.Key("x").NumberArray(series.x).Key("y").NumberArray(series.y);
    json.Key("marked").BeginArray();
    for (const long point : series.marked) json.Integer(point);
    json.EndArray().EndObject();
  }
  json.EndArray().Key("lines").BeginArray();
  for (const auto& line : chart.lines) {
    json.BeginObject()
        .Field("orientation", line.orientation == shell::LineOrientation::Horizontal ? "h" : "v")
        .Key("value")
        .Number(line.value)
        .Field("label", line.label)
        .EndObject();
  }
  json.EndArray().Key("labels").BeginArray();
  for (const auto& label : chart.labels) json.String(label.text);
  json.EndArray();
  if (chart.reportsCategories) json.Key("categories").StringArray(chart.categories);
  json.EndObject();
}

// The rows of a grid as arrays of strings, written straight into the
// output. A control chart's grid repeats its limits and codes down millions
// of rows: a stored text met again in the same column is written from its
// quoted and escaped form kept from the row before.
void WriteGridRows(JsonWriter& json, const shell::ResultTable& table) {
  struct LastText {
    const char* text = nullptr;
    std::size_t size = 0;
    std::string quoted = "\"\"";  // an empty cell's view has no text at all
  };
  std::vector<LastText> last(table.Width());
  std::string& out = json.Buffer();
  std::size_t column = 0;
  bool first_row = true;
  table.ForEachRow(
      [&](std::size_t) {
        json.FlushIfFull();
        out += first_row ? "[" : ",[";
        first_row = false;
        column = 0;
      },
      [&](std::string_view cell, bool is_number) {
        if (column > 0) out += ',';
        if (is_number) {
          out += '"';
          out += cell;
          out += '"';
        } else {
          LastText& seen = last[column];
          if (seen.text != cell.data() || seen.size != cell.size())
            seen = {cell.data(), cell.size(), '"' + JsonEscape(cell) + '"'};
          out += seen.quoted;
        }
        ++column;
      },
      [&] { out += ']'; });
}

void WriteWindow(JsonWriter& json, const shell::ResultWindow& window) {
  json.BeginObject().Field("kind", shell::WindowKindName(window.kind)).Field("title", window.title);
  json.Key("table");
  if (window.table) {
    const shell::ResultTable& table = *window.table;
    json.BeginObject().Key("columns").StringArray(table.columns).Key("rows").BeginArray();
    WriteGridRows(json, table);
    json.EndArray().EndObject();
  } else {
    json.Null();
  }
  json.Key("charts").BeginArray();
  for (const auto& chart : window.charts) WriteChart(json, chart);
  json.EndArray().EndObject();
}

std::string MessagesText(const std::vector<shell::MessageBox>& messages) {
  std::string out;
  for (const auto& box : messages) {
    out += "[" + box.title + "] " + box.text + "  (" + shell::IconName(box.icon) + ", " +
           shell::ButtonsName(box.buttons) + ")\n";
  }
  return out;
}

}  // namespace

void WriteAlignedTable(const shell::ResultTable& table, std::ostream& out) {
  // Two passes over the cells, each text made on demand: one for the column
  // widths, one to write.
  const bool has_heading = table.HasHeading();
  const auto each_line = [&](auto&& visit) {
    if (has_heading) {
      for (std::size_t c = 0; c < table.columns.size(); ++c) visit(c, table.columns.size(), table.columns[c]);
    }
    std::size_t width = 0, c = 0;
    table.ForEachRow(
        [&](std::size_t row_width) {
          width = row_width;
          c = 0;
          if (width == 0) visit(0, 0, std::string_view());  // an empty row is an empty line
        },
        [&](std::string_view cell, bool) { visit(c++, width, cell); }, [] {});
  };
  std::vector<std::size_t> widths(std::max<std::size_t>(table.Width(), 1), 0);
  each_line([&](std::size_t c, std::size_t, std::string_view text) { widths[c] = std::max(widths[c], text.size()); });
  std::string line;
  each_line([&](std::size_t c, std::size_t width, std::string_view text) {
    line += text;
    if (c + 1 < width) line.append(widths[c] - text.size() + 2, ' ');
    else {
      line += '\n';
      out.write(line.data(), static_cast<std::streamsize>(line.size()));
      line.clear();
    }
  });
}

std::string AlignedTable(const shell::ResultTable& table) {
  std::ostringstream out;
  WriteAlignedTable(table, out);
  return out.str();
}

void WriteRunRecordJson(const RunRecord& record, std::ostream& out) {
  JsonWriter json(out);
  json.BeginObject().Field("outcome", record.outcome);
  WriteMessages(json, record.messages);
  json.Field("log", record.log).Key("windows").BeginArray();
  for (const auto& window : record.windows) WriteWindow(json, window);
  json.EndArray().EndObject().Raw("\n");
}

std::string RunRecordJson(const RunRecord& record) {
  std::ostringstream out;
  WriteRunRecordJson(record, out);
  return out.str();
}

void WriteRunRecordText(const RunRecord& record, std::ostream& out) {
  out << "Outcome: " << record.outcome << "\n";
  if (!record.messages.empty()) out << "\nMessages:\n" << MessagesText(record.messages);
  // The session log without its welcome line: what this command wrote.
  std::string added;
  for (std::size_t pos = record.log.find("\r\n"); pos != std::string::npos;) {
    const std::size_t next = record.log.find("\r\n", pos + 2);
    added += "  " + record.log.substr(pos + 2, next == std::string::npos ? std::string::npos : next - pos - 2) + "\n";
    pos = next;
  }
  if (!added.empty()) out << "\nSession log:\n" << added;
  for (const auto& window : record.windows) {
    out << "\n" << shell::WindowKindName(window.kind) << ": " << window.title << "\n";
    if (window.table) WriteAlignedTable(*window.table, out);
    for (const auto& chart : window.charts) {
      out << "  chart " << chart.name << (chart.title.empty() ? "" : ": " + chart.title) << "\n";
      for (const auto& line : chart.lines)
        out << "    line " << line.label << " at " << stats::FormatNumber(line.value) << "\n";
    }
  }
}

std::string RunRecordText(const RunRecord& record) {
  std::ostringstream out;
  WriteRunRecordText(record, out);
  return out.str();
}

std::string SelectRecordJson(const SelectRecord& record) {
  JsonWriter json;
  json.BeginObject().Field("outcome", record.outcome);
  WriteMessages(json, record.messages);
  json.Key("selection");
  if (record.selection) {
    const auto& s = *record.selection;
    json.BeginObject()
        .Key("firstColumn").Integer(s.firstColumn)
        .Key("lastColumn").Integer(s.lastColumn)
        .Key("firstRow").Integer(s.firstRow)
        .Key("lastRow").Integer(s.lastRow)
        .Key("columnStep").Integer(s.columnStep)
        .Key("rowStep").Integer(s.rowStep)
        .Key("values").NumberArray(s.values)
        .Key("count").Integer(s.count)
        .EndObject();
  } else {
    json.Null();
  }
  json.EndObject();
  return json.Text() + "\n";
}

std::string SelectRecordText(const SelectRecord& record) {
  std::string out = "Outcome: " + record.outcome + "\n";
  if (!record.messages.empty()) out += "\nMessages:\n" + MessagesText(record.messages);
  if (record.selection) {
    const auto& s = *record.selection;
    out += "\nColumns " + std::to_string(s.firstColumn) + " to " + std::to_string(s.lastColumn) + " (step " +
           std::to_string(s.columnStep) + "), rows " + std::to_string(s.firstRow) + " to " +
           std::to_string(s.lastRow) + " (step " + std::to_string(s.rowStep) + ")\n";
    out += std::to_string(s.count) + " values:";
    for (const double value : s.values) out += " " + stats::FormatNumber(value);
    out += "\n";
  }
  return out;
}

}  // namespace orvik::cli
