#include <QCheckBox>
#include <QComboBox>
#include <QXmlStreamReader>
#include <QRegularExpression>
#include <QSpinBox>
#include <QElapsedTimer>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolTip>

#include "charts/control_form.h"
#include "commands/command_registry.h"
#include "gui/chart_view.h"
#include "gui/model_dialog.h"
#include "gui/result_window_widget.h"
#include "gui/sheet_printer.h"
#include "gui/tool_dialogs.h"

using namespace orvik;
using orvik::gui::ChartView;
using orvik::gui::ResultWindowWidget;

namespace {

shell::ResultWindow TwoChartWindow() {
  shell::ResultWindow window = shell::MakeControlForm("xbar-R control chart", true);
  window.commandKey = "mnuBarX-R";
  shell::ChartSeries& one = window.Chart("ChartOne");
  one.title = "xbar";
  one.xTitle = "Sample";
  one.series.push_back({"xbar", shell::SeriesType::Line, {1, 2, 3, 4, 5}, {10, 11, 9.5, 12.75, 10}, {4}, {}, false, false, false, {}});
  one.lines.push_back({shell::LineOrientation::Horizontal, 12.5, "UCL= 12.5", {}, false});
  one.lines.push_back({shell::LineOrientation::Horizontal, 10.6, "CL= 10.6", {}, false});
  one.lines.push_back({shell::LineOrientation::Horizontal, 8.7, "LCL= 8.7", {}, true});
  shell::ChartSeries& two = window.Chart("ChartTwo");
  two.series.push_back({"R", shell::SeriesType::Line, {2, 3, 4, 5, 6}, {1, 2, 1.5, 3, 2}, {}, {}, false, false, false, {}});
  window.table->columns = {"xbar", "xbar UCL"};
  window.table->AddRow({"10", "12.5"});
  window.table->AddRow({});
  window.table->AddRow({" [xbar & R Code] "}, shell::RowStyle{{}, shell::kBlue, false});
  return window;
}

int CountItems(QCustomPlot* plot, const char* class_name) {
  int count = 0;
  for (int i = 0; i < plot->itemCount(); ++i)
    if (QString::fromLatin1(plot->item(i)->metaObject()->className()) == QLatin1String(class_name)) ++count;
  return count;
}

// The pages of a PDF file that Qt wrote, each as the length of its
// compressed content stream: a blank page draws almost nothing.
QList<qsizetype> PdfPages(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QString pdf = QString::fromLatin1(file.readAll());
  if (!pdf.startsWith(QLatin1String("%PDF-"))) return {};
  const auto object = [&pdf](const QString& number) {
    const qsizetype at = pdf.indexOf(QRegularExpression(QStringLiteral("(^|\\n)%1 0 obj").arg(number)));
    return at < 0 ? QString() : pdf.mid(at, 200);
  };
  QList<qsizetype> pages;
  static const QRegularExpression page(QStringLiteral("/Type /Page\\n[^>]*/Contents (\\d+) 0 R"));
  static const QRegularExpression length(QStringLiteral("/Length (\\d+)( 0 R)?"));
  for (auto match = page.globalMatch(pdf); match.hasNext();) {
    const QRegularExpressionMatch size = length.match(object(match.next().captured(1)));
    if (!size.hasMatch()) return {};
    const QString direct = size.captured(1);
    static const QRegularExpression value(QStringLiteral("obj\\s+(\\d+)"));
    pages << (size.captured(2).isEmpty() ? direct : value.match(object(direct)).captured(1)).toLongLong();
  }
  return pages;
}

QStringList Texts(QCustomPlot* plot) {
  QStringList texts;
  for (int i = 0; i < plot->itemCount(); ++i)
    if (auto* text = qobject_cast<QCPItemText*>(plot->item(i))) texts << text->text();
  return texts;
}

// A small dialog: a limit text box that the second option button switches
// off, a check box, OK refusing an empty limit.
class LimitDialog : public shell::DialogModel {
 public:
  LimitDialog() : DialogModel("TestLimit", "Limits") {
    AddControl({"Uppertxt", shell::ControlKind::TextBox, "Upper", "", false, true, ""});
    AddControl({"AnalysisOpt", shell::ControlKind::OptionButton, "Computed", "", false, true, "limits"});
    AddControl({"ControlOpt", shell::ControlKind::OptionButton, "Given", "", true, true, "limits"});
    AddControl({"SubYes", shell::ControlKind::CheckBox, "Subgroups", "", false, true, ""});
  }
  std::string stored;

 protected:
  void OnClick(const std::string& control) override {
    if (control == "AnalysisOpt" || control == "ControlOpt")
      MutableControl("Uppertxt").enabled = Control("ControlOpt").checked;
  }
  void OnFocusLost(const std::string& control) override {
    // Leaving the box trims the blanks the user typed.
    std::string& text = MutableControl(control).text;
    while (!text.empty() && text.back() == ' ') text.pop_back();
  }
  bool OnOk(shell::Host& host) override {
    if (Control("ControlOpt").checked && Control("Uppertxt").text.empty()) {
      host.Refuse("Include improper data or null cells");
      return false;
    }
    stored = Control("Uppertxt").text;
    return true;
  }
  void OnCancel(shell::Host& host) override { host.Log().AppendSessionLine("Cancel input specification"); }
};

class RecordingHost : public shell::Host {
 public:
  std::vector<shell::MessageBox> boxes;
  shell::MessageAnswer ShowMessage(const shell::MessageBox& box) override {
    boxes.push_back(box);
    return shell::MessageAnswer::Ok;
  }

 protected:
  shell::DialogOutcome ShowDialog(shell::DialogModel&) override { return shell::DialogOutcome::Cancelled; }
  void OpenResultWindow(shell::ResultWindow) override {}
  void OpenDesignSheet(worksheet::Worksheet) override {}
  worksheet::Worksheet* CurrentWorksheet() override { return nullptr; }
};

}  // namespace

class ResultWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void controlFormHoldsItsNamedChartsAndGrid() {
    ResultWindowWidget window(TwoChartWindow());
    QCOMPARE(window.objectName(), QStringLiteral("ControlForm"));
    QVERIFY(window.findChild<QTabWidget*>(QStringLiteral("ControlTab")));
    auto* one = window.findChild<ChartView*>(QStringLiteral("ChartOne"));
    auto* two = window.findChild<ChartView*>(QStringLiteral("ChartTwo"));
    QVERIFY(one && two);
    // The series, and its marked point drawn apart in red squares.
    QCOMPARE(one->graphCount(), 2);
    QCOMPARE(one->graph(1)->dataCount(), 1);
    QCOMPARE(one->graph(1)->data()->at(0)->value, 12.75);
    QCOMPARE(one->graph(1)->scatterStyle().shape(), QCPScatterStyle::ssSquare);
    QCOMPARE(CountItems(one, "QCPItemStraightLine"), 3);
    QVERIFY(Texts(one).contains(QStringLiteral("UCL= 12.5")));
    QVERIFY(Texts(one).contains(QStringLiteral("LCL= 8.7")));
    // Limit lines lie inside the value range; the stacked charts share
    // their sample axis although the lower one starts a sample later.
    QVERIFY(one->yAxis->range().contains(12.75) && one->yAxis->range().contains(8.7));
    QCOMPARE(one->xAxis->range(), two->xAxis->range());
    QVERIFY(one->xAxis->range().contains(1) && one->xAxis->range().contains(6));

    QAbstractItemModel* grid = window.findChild<QTableView*>(QStringLiteral("DataView"))->model();
    QCOMPARE(grid->rowCount(), 3);
    QCOMPARE(grid->headerData(1, Qt::Horizontal).toString(), QStringLiteral("xbar UCL"));
    QCOMPARE(grid->index(2, 0).data(Qt::ForegroundRole).value<QBrush>().color(), QColor(0, 0, 255));
    QCOMPARE(window.GridText(), QStringLiteral("xbar\txbar UCL\r\n10\t12.5\r\n\r\n [xbar & R Code] \r\n"));
  }

  void beyondLimitAndRuleFlaggedPointsLookApart() {
    shell::ResultWindow record = TwoChartWindow();
    shell::PlotSeries& xbar = record.Chart("ChartOne").series.front();
    xbar.marked = {2, 4, 5};
    xbar.markCodes = {"B ", "* C ", "B C "};
    ResultWindowWidget window(record);
    ChartView* chart = window.Charts().front();
    QStringList legend;
    for (int i = 0; i < chart->legend->itemCount(); ++i)
      legend << qobject_cast<QCPPlottableLegendItem*>(chart->legend->item(i))->plottable()->name();
    QCOMPARE(legend, (QStringList{"Beyond a limit", "Run rule"}));
    QVERIFY(chart->legend->visible());
    const auto graph = [chart](const char* name) {
      for (int i = 0; i < chart->graphCount(); ++i)
        if (chart->graph(i)->name() == QLatin1String(name)) return chart->graph(i);
      return static_cast<QCPGraph*>(nullptr);
    };
    QCOMPARE(graph("Beyond a limit")->scatterStyle().shape(), QCPScatterStyle::ssSquare);
    QCOMPARE(graph("Beyond a limit")->dataCount(), 1);
    QCOMPARE(graph("Run rule")->scatterStyle().shape(), QCPScatterStyle::ssTriangle);
    QCOMPARE(graph("Run rule")->dataCount(), 2);
    QVERIFY(Texts(chart).contains(QStringLiteral("B C")));  // letters beside the flagged point
    // The lower chart has no marks, and so no legend.
    QVERIFY(!window.Charts().back()->legend->visible());
  }

  void aClickOnAPointShowsItsNumberAndValue() {
    // A one-chart window of the MR chart: its points are numbered from
    // sample 2, and a click names the sample, not the position.
    charts::ControlChart mr = charts::MakeControlChart("MR", {0.5, 1.25, 0.75}, {2.5, 0.8, 0.0, 1.9, 0.0}, 2.0);
    charts::FinishChart(mr);
    ResultWindowWidget window(charts::OneChartWindow("MR control chart", "mnuMR", mr));
    ChartView* chart = window.Charts().front();
    QCOMPARE(chart->PointInfo(), QString());
    window.resize(800, 500);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    chart->replot();
    const QPoint at(int(chart->xAxis->coordToPixel(4)), int(chart->yAxis->coordToPixel(0.75)));
    QTest::mouseClick(chart, Qt::LeftButton, Qt::NoModifier, at);
    QCOMPARE(chart->PointInfo(), QStringLiteral("Number: 4 | Value: 0.75"));
    // A marked point lies under its marker, which answers for it.
    ResultWindowWidget marked(TwoChartWindow());
    marked.resize(800, 500);
    marked.show();
    QVERIFY(QTest::qWaitForWindowExposed(&marked));
    ChartView* upper = marked.Charts().front();
    upper->replot();
    QTest::mouseClick(upper, Qt::LeftButton, Qt::NoModifier,
                      QPoint(int(upper->xAxis->coordToPixel(4)), int(upper->yAxis->coordToPixel(12.75))));
    QCOMPARE(upper->PointInfo(), QStringLiteral("Number: 4 | Value: 12.75"));
    // The pointer tells the same beside the point, on the click and on a hover.
    const auto pixel = [upper](double x, double y) {
      return QPointF(upper->xAxis->coordToPixel(x), upper->yAxis->coordToPixel(y));
    };
    QCOMPARE(QToolTip::text(), QStringLiteral("Point 4: beyond a control limit\nNumber: 4 | Value: 12.75"));
    QMouseEvent hover(QEvent::MouseMove, pixel(2, 11), upper->mapToGlobal(pixel(2, 11)), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QApplication::sendEvent(upper, &hover);
    QCOMPARE(QToolTip::text(), QStringLiteral("Number: 2 | Value: 11"));
    // Ctrl and a drag zoom to the rectangle drawn; Reset View goes back.
    const QCPRange whole = upper->xAxis->range();
    const auto send = [upper](QEvent::Type type, QPointF at, Qt::MouseButtons held) {
      QMouseEvent event(type, at, upper->mapToGlobal(at), Qt::LeftButton, held, Qt::ControlModifier);
      QApplication::sendEvent(upper, &event);
    };
    send(QEvent::MouseButtonPress, pixel(2, 12.5), Qt::LeftButton);
    send(QEvent::MouseMove, pixel(3.5, 10), Qt::LeftButton);
    send(QEvent::MouseButtonRelease, pixel(3.5, 10), Qt::NoButton);
    QVERIFY2(std::abs(upper->xAxis->range().lower - 2) < 0.05 && std::abs(upper->xAxis->range().upper - 3.5) < 0.05,
             qPrintable(QStringLiteral("%1 %2").arg(upper->xAxis->range().lower).arg(upper->xAxis->range().upper)));
    upper->ResetView();
    QCOMPARE(upper->xAxis->range(), whole);
    // A window whose command names none of its charts for point clicks
    // shows nothing.
    ResultWindowWidget other(charts::OneChartWindow("Run chart", "mnuRun", mr));
    QVERIFY(!other.Charts().front()->ShowsPointInfo());
  }

  void dataChartDrawsBarsBoxesCategoriesSecondAxisAndLabels() {
    shell::ResultWindow window = shell::MakeDataChart("Pareto chart");
    window.table = std::nullopt;
    auto& chart = window.Chart("DataChartView");
    chart.y2Title = "Cum %";
    chart.categories = {"Scratch", "Dent", "Crack"};
    chart.series.push_back({"Count", shell::SeriesType::Bar, {}, {30, 20, 5}, {}, shell::kRed, false, false, false, {}});
    chart.series.push_back({"Cum", shell::SeriesType::Line, {}, {54.5, 90.9, 100}, {}, {}, true, false, false, {}});
    chart.lines.push_back({shell::LineOrientation::Vertical, 2.5, "LSL", {}, false});
    chart.labels.push_back({"n = 55", {}, {}});
    chart.labels.push_back({"peak", 1.0, 30.0});
    ResultWindowWidget widget(window);
    QCOMPARE(widget.objectName(), QStringLiteral("DataChart"));
    QVERIFY(widget.findChild<QTabWidget*>(QStringLiteral("DataChartTab")));
    ChartView* view = widget.Charts().front();
    auto* bars = qobject_cast<QCPBars*>(view->plottable(0));
    QVERIFY(bars);
    QCOMPARE(bars->dataCount(), 3);
    QCOMPARE(bars->brush().color().rgb(), QColor(255, 0, 0).rgb());  // the core's colour
    auto ticker = view->xAxis->ticker().dynamicCast<QCPAxisTickerText>();
    QVERIFY(ticker);
    QCOMPARE(ticker->ticks().value(2.0), QStringLiteral("Dent"));
    QCOMPARE(view->yAxis2->label(), QStringLiteral("Cum %"));
    // Both axes start at the bars' base line.
    QCOMPARE(view->yAxis->range().lower, 0.0);
    QCOMPARE(view->yAxis2->range().lower, 0.0);
    QCOMPARE(view->graph(0)->valueAxis(), view->yAxis2);
    QVERIFY(view->yAxis->range().contains(30) && !view->yAxis->range().contains(90));
    QVERIFY(Texts(view).contains(QStringLiteral("n = 55")));
    QVERIFY(Texts(view).contains(QStringLiteral("LSL")));
    QCOMPARE(widget.DataView()->model()->rowCount(), 0);

    shell::ResultWindow boxes = shell::MakeDataChart("Box-plot");
    boxes.Chart("DataChartView").series.push_back({"A", shell::SeriesType::Box, {}, {1, 2, 3, 4, 5, 2, 3, 4, 5, 9}, {}, {}, false, false, false, {}});
    ResultWindowWidget box_widget(boxes);
    auto* box = qobject_cast<QCPStatisticalBox*>(box_widget.Charts().front()->plottable(0));
    QVERIFY(box);
    QCOMPARE(box->dataCount(), 2);
    QCOMPARE(box->data()->at(1)->median, 4.0);
    QCOMPARE(box->data()->at(1)->maximum, 9.0);
  }

  // The charts of an analysis (a fitted line and its residual plots) take a
  // tab each beside the grid and keep their own horizontal ranges.
  void analysisChartsTakeATabEachWithTheirOwnAxes() {
    shell::ResultWindow window = shell::MakeDataChart("Simple linear regression");
    window.charts.front().title = "Fitted line plot";
    window.charts.front().series.push_back({"Data", shell::SeriesType::Points, {1, 2, 3}, {2, 4, 7}, {}, {}, false, false, false, {}});
    shell::ChartSeries order;
    order.name = "ResidualOrder";
    order.title = "Residuals versus order";
    order.series.push_back({"Residual", shell::SeriesType::Line, {100, 200, 300}, {1, -1, 0}, {}, {}, false, false, false, {}});
    window.charts.push_back(order);
    ResultWindowWidget widget(window);
    auto* tabs = widget.findChild<QTabWidget*>(QStringLiteral("DataChartTab"));
    QVERIFY(tabs);
    QCOMPARE(tabs->count(), 3);
    QCOMPARE(tabs->tabText(0), QStringLiteral("Fitted line plot"));
    QCOMPARE(tabs->tabText(1), QStringLiteral("Residuals versus order"));
    QCOMPARE(tabs->tabText(2), QStringLiteral("Data"));
    QVERIFY(!widget.Charts()[0]->xAxis->range().contains(200));
    QVERIFY(widget.Charts()[1]->xAxis->range().contains(200));
  }

  void aHundredThousandPointsDrawAndPanQuickly() {
    shell::ResultWindow window = shell::MakeControlForm("x-MR control chart", false);
    auto& series = window.Chart("ChartOne").series.emplace_back();
    for (int i = 0; i < 100'000; ++i) series.y.push_back(10 + (i % 97) * 0.01);
    series.marked = {5, 500, 50'000};
    QElapsedTimer timer;
    timer.start();
    ResultWindowWidget widget(window);
    widget.resize(900, 600);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    ChartView* chart = widget.Charts().front();
    for (int step = 0; step < 10; ++step) {
      chart->xAxis->moveRange(500);
      chart->replot(QCustomPlot::rpImmediateRefresh);
    }
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    // The long line shows no point markers until zoomed in to a few points.
    QCPGraph* line = chart->graph(0);
    chart->xAxis->setRange(0, 100'000);
    QCOMPARE(line->scatterStyle().shape(), QCPScatterStyle::ssNone);
    chart->xAxis->setRange(10, 60);
    QVERIFY(line->scatterStyle().shape() != QCPScatterStyle::ssNone);
  }

  // Pictures and prints hold every chart of the window, stacked.
  void picturesAndPrintsHoldTheWholeWindow() {
    QTemporaryDir dir;
    ResultWindowWidget widget(TwoChartWindow());
    const std::vector<ChartView*>& charts = widget.Charts();
    for (const char* name : {"c.png", "c.jpg", "c.bmp", "c.svg", "c.pdf"}) {
      const QString path = dir.filePath(QString::fromLatin1(name));
      QVERIFY2(gui::SaveCharts(charts, path), name);
      QVERIFY2(QFileInfo(path).size() > 500, name);
    }
    QVERIFY(!gui::SaveCharts(charts, dir.filePath(QStringLiteral("c.doc"))));
    const QImage png(dir.filePath(QStringLiteral("c.png")));
    QCOMPARE(png.size(), gui::StackedSize(charts) * 2);
    QCOMPARE(gui::StackedSize(charts).height(), std::max(charts[0]->height(), 400) + std::max(charts[1]->height(), 400));
    // Each half holds a chart: dark pixels of its axes and texts.
    for (const int top : {0, png.height() / 2}) {
      int dark = 0;
      for (int y = top; y < top + png.height() / 2; y += 3)
        for (int x = 0; x < png.width(); x += 3) dark += qGray(png.pixel(x, y)) < 100;
      QVERIFY2(dark > 200, qPrintable(QString::number(top)));
    }
    // A chosen size and resolution: the pixels asked for, the resolution
    // recorded, the text as large in inches as at the default.
    const QString sized = dir.filePath(QStringLiteral("sized.png"));
    QVERIFY(gui::SaveCharts(charts, sized, {600, 450, 300}));
    const QImage small(sized);
    QCOMPARE(small.size(), QSize(600, 450));
    QCOMPARE(qRound(small.dotsPerMeterX() * 0.0254), 300);
    QVERIFY(!gui::SaveCharts(charts, sized, {0, 450, 300}));
    // The vector files are what they claim: an SVG document of the picture's
    // size, a PDF of one page.
    QFile svg(dir.filePath(QStringLiteral("c.svg")));
    QVERIFY(svg.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&svg);
    QStringList elements;
    while (xml.readNext() != QXmlStreamReader::EndDocument && !xml.hasError())
      if (xml.isStartElement()) elements << xml.name().toString();
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(elements.value(0), QStringLiteral("svg"));
    QVERIFY(elements.count(QStringLiteral("path")) + elements.count(QStringLiteral("polyline")) > 10);
    const QList<qsizetype> picture_pages = PdfPages(dir.filePath(QStringLiteral("c.pdf")));
    QCOMPARE(picture_pages.size(), 1);
    QVERIFY(picture_pages.front() > 1000);

    // Printed to a PDF file: the chart is one page that is not blank; the
    // whole window adds its grid on a page of its own.
    for (const bool whole : {false, true}) {
      const QString path = dir.filePath(whole ? QStringLiteral("window.pdf") : QStringLiteral("print.pdf"));
      QPrinter printer(QPrinter::HighResolution);
      printer.setOutputFormat(QPrinter::PdfFormat);
      printer.setOutputFileName(path);
      if (whole) gui::PrintResultWindow(printer, charts, &*widget.Record().table);
      else gui::PrintCharts(printer, {charts.front()});
      const QList<qsizetype> pages = PdfPages(path);
      QCOMPARE(pages.size(), whole ? 2 : 1);
      // A blank page's content is a few dozen bytes; the grid's page draws
      // less than a chart's.
      QVERIFY2(pages.front() > 1000, qPrintable(QString::number(pages.front())));
      for (const qsizetype drawn : pages) QVERIFY2(drawn > 300, qPrintable(QString::number(drawn)));
    }
  }

  // Apply restyles at once and the window keeps the look; Cancel puts
  // back the look the chart had when the dialog opened.
  void chartPropertyAppliesAndCancelRestores() {
    ResultWindowWidget widget(TwoChartWindow());
    ChartView* chart = widget.Charts().front();
    const QPixmap before = chart->toPixmap(400, 300);
    gui::ChartProperty dialog(widget, *chart);
    dialog.SetColorChooser([](const QColor&) { return QColor(0x12, 0x34, 0x56); });
    QCOMPARE(dialog.TitleEdit()->text(), QStringLiteral("xbar"));
    dialog.TitleEdit()->setText(QStringLiteral("Means"));
    dialog.GridLines()->setChecked(false);
    dialog.findChild<QPushButton*>(QStringLiteral("LineColor"))->click();
    dialog.findChild<QComboBox*>(QStringLiteral("Marker"))->setCurrentText(QStringLiteral("Diamond"));
    dialog.findChild<QSpinBox*>(QStringLiteral("LimitDecimals"))->setValue(3);
    dialog.findChild<QCheckBox*>(QStringLiteral("YAutomatic"))->setChecked(false);
    dialog.findChild<QDoubleSpinBox*>(QStringLiteral("YMinimum"))->setValue(5);
    dialog.findChild<QDoubleSpinBox*>(QStringLiteral("YMaximum"))->setValue(20);
    dialog.findChild<QCheckBox*>(QStringLiteral("YLog"))->setChecked(true);
    dialog.Apply();
    QCOMPARE(widget.Record().presentation.size(), std::size_t{1});
    const shell::ChartPresentation look = widget.Record().presentation.front();
    QCOMPARE(look.chart, std::string("ChartOne"));
    QCOMPARE(look.title, std::optional<std::string>("Means"));
    QCOMPARE(look.series.size(), std::size_t{1});  // the R series of ChartTwo is another chart
    QCOMPARE(look.series[0].lineColor, std::optional<shell::Rgb>(shell::Rgb{0x123456}));
    QCOMPARE(look.series[0].lineWidth, std::optional<double>());  // untouched fields stay the analysis's
    QCOMPARE(chart->Description().title, std::string("xbar"));  // the analysis's description is kept
    QCOMPARE(qobject_cast<QCPTextElement*>(chart->plotLayout()->element(0, 0))->text(), QStringLiteral("Means"));
    QVERIFY(!chart->xAxis->grid()->visible());
    QCOMPARE(chart->graph(0)->pen().color(), QColor(0x12, 0x34, 0x56));
    QCOMPARE(chart->graph(0)->scatterStyle().pen().color(), QColor(0x12, 0x34, 0x56));  // markers follow the line
    QCOMPARE(chart->graph(0)->scatterStyle().shape(), QCPScatterStyle::ssDiamond);
    QCOMPARE(chart->yAxis->range(), QCPRange(5, 20));
    QCOMPARE(chart->yAxis->scaleType(), QCPAxis::stLogarithmic);
    QVERIFY(Texts(chart).contains(QStringLiteral("UCL= 12.500")));
    QCOMPARE(CountItems(chart, "QCPItemStraightLine"), 3);  // redrawn, not doubled
    // ChartTwo is untouched and still shares the sample axis.
    QCOMPARE(widget.Charts()[1]->xAxis->range(), chart->xAxis->range());

    // A negative fixed minimum cannot draw a log scale.
    dialog.findChild<QDoubleSpinBox*>(QStringLiteral("YMinimum"))->setValue(-1);
    dialog.Apply();
    QCOMPARE(chart->yAxis->scaleType(), QCPAxis::stLinear);

    dialog.reject();
    QVERIFY(widget.Record().presentation.empty());
    QCOMPARE(qobject_cast<QCPTextElement*>(chart->plotLayout()->element(0, 0))->text(), QStringLiteral("xbar"));
    QVERIFY(chart->xAxis->grid()->visible());
    QVERIFY(Texts(chart).contains(QStringLiteral("UCL= 12.5")));
    QCOMPARE(chart->toPixmap(400, 300).toImage(), before.toImage());
  }

  void dialogWidgetsFollowTheModel() {
    LimitDialog model;
    RecordingHost host;
    gui::ModelDialog dialog(model, host);
    QCOMPARE(dialog.objectName(), QStringLiteral("TestLimit"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Limits"));
    auto* upper = qobject_cast<QLineEdit*>(dialog.ControlWidget(QStringLiteral("Uppertxt")));
    auto* analysis = qobject_cast<QRadioButton*>(dialog.ControlWidget(QStringLiteral("AnalysisOpt")));
    auto* given = qobject_cast<QRadioButton*>(dialog.ControlWidget(QStringLiteral("ControlOpt")));
    auto* sub = qobject_cast<QCheckBox*>(dialog.ControlWidget(QStringLiteral("SubYes")));
    QVERIFY(upper && analysis && given && sub);
    QVERIFY(given->isChecked());
    QVERIFY(!analysis->isChecked());
    analysis->click();
    QVERIFY(model.Control("AnalysisOpt").checked);
    QVERIFY(!given->isChecked());
    QVERIFY(!upper->isEnabled());
    given->click();
    QVERIFY(upper->isEnabled());
    sub->click();
    QVERIFY(model.Control("SubYes").checked);
    // Leaving the text box hands the text to the model, whose fix shows.
    upper->setText(QStringLiteral("12.5  "));
    emit upper->editingFinished();
    QCOMPARE(model.Control("Uppertxt").text, std::string("12.5"));
    QCOMPARE(upper->text(), QStringLiteral("12.5"));
  }

  // Every registered dialog shows one OK and one Cancel button and a label
  // beside each text box.
  void everyDialogLabelsItsBoxesAndHasOneOkAndOneCancel() {
    RecordingHost host;
    for (const shell::DialogDeclaration& declaration : commands::Dialogs()) {
      const std::unique_ptr<shell::DialogModel> model = declaration.make();
      gui::ModelDialog dialog(*model, host);
      const char* name = declaration.name.data();
      int ok = 0, cancel = 0;
      for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
        ok += button->text() == QLatin1String("OK") || button->text() == QLatin1String("&OK");
        cancel += button->text() == QLatin1String("Cancel") || button->text() == QLatin1String("&Cancel");
      }
      QVERIFY2(ok == 1 && cancel == 1, name);
      auto* form = dialog.findChild<QFormLayout*>();
      for (QLineEdit* edit : dialog.findChildren<QLineEdit*>()) {
        auto* label = form ? qobject_cast<QLabel*>(form->labelForField(edit)) : nullptr;
        QVERIFY2(label && !label->text().isEmpty(), qPrintable(QString::fromLatin1(name) + " " + edit->objectName()));
      }
    }
  }

  void okStaysOpenOnRefusalAndCancelWritesItsLine() {
    LimitDialog model;
    RecordingHost host;
    gui::ModelDialog dialog(model, host);
    dialog.show();
    dialog.accept();
    QCOMPARE(host.boxes.size(), std::size_t{1});
    QCOMPARE(host.boxes[0].text, std::string("Include improper data or null cells"));
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.result(), 0);
    // Text still being typed counts when OK is pressed.
    auto* upper = qobject_cast<QLineEdit*>(dialog.ControlWidget(QStringLiteral("Uppertxt")));
    upper->setFocus();
    upper->setText(QStringLiteral("7"));
    dialog.activateWindow();
    QApplication::setActiveWindow(&dialog);
    upper->setFocus();
    dialog.accept();
    QCOMPARE(model.stored, std::string("7"));
    QCOMPARE(dialog.result(), int(QDialog::Accepted));

    LimitDialog other;
    gui::ModelDialog cancelled(other, host);
    cancelled.reject();
    QVERIFY(host.Log().Text().ends_with("\r\nCancel input specification"));
  }
};

QTEST_MAIN(ResultWindowTest)
#include "result_window_test.moc"
