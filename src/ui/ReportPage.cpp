#include "ReportPage.h"

#include "OrvelStockMsgBox.h"
#include "report/ReportFiles.h"
#include "reportcharts/ReportPlots.h"

#include <qcustomplot.h>

#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItemModel>
#include <QTableView>
#include <QTextDocumentFragment>
#include <QVBoxLayout>

#include <map>

namespace {

// Chinese traders read red as a gain and green as a loss.
QColor signColour(const Figure &value)
{
    if (!value || *value == 0)
        return QColor(51, 51, 51);
    return *value > 0 ? QColor(200, 16, 46) : QColor(21, 128, 61);
}

// A cell that shows the figure and sorts by its number.
QStandardItem *figureItem(const Figure &value, bool percent = true, bool coloured = true)
{
    auto *item = new QStandardItem(percent ? reportPercent(value) : reportNumber(value));
    if (value)
        item->setData(*value, Qt::UserRole);
    if (coloured)
        item->setForeground(signColour(value));
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

QStandardItem *countItem(int count)
{
    auto *item = new QStandardItem(QString::number(count));
    item->setData(count, Qt::UserRole);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

QTableView *tableView(QStandardItemModel *model, QWidget *parent)
{
    auto *view = new QTableView(parent);
    view->setModel(model);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->verticalHeader()->hide();
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    view->setMinimumHeight(120);
    return view;
}

QLabel *heading(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(QStringLiteral("<b>%1</b>").arg(text), parent);
    label->setContentsMargins(0, 8, 0, 0);
    return label;
}

} // namespace

ReportPage::ReportPage(QWidget *parent)
    : QWidget(parent), m_years(new QStandardItemModel(this)), m_months(new QStandardItemModel(this)),
      m_exits(new QStandardItemModel(this))
{
    auto *outer = new QVBoxLayout(this);
    auto *scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    outer->addWidget(scroll);
    auto *content = new QWidget(scroll);
    scroll->setWidget(content);
    auto *layout = new QVBoxLayout(content);

    m_export = new QPushButton(QStringLiteral("导出报告"), content);
    m_export->setObjectName(QStringLiteral("exportReport"));
    connect(m_export, &QPushButton::clicked, this, &ReportPage::exportReport);
    layout->addWidget(m_export, 0, Qt::AlignRight);
    m_figures = new QGridLayout;
    layout->addLayout(m_figures);

    m_account = new QCustomPlot(content);
    m_account->setMinimumHeight(300);
    layout->addWidget(heading(QStringLiteral("账户与市场（滚轮缩放，拖动平移）"), content));
    layout->addWidget(m_account);

    m_yearView = tableView(m_years, content);
    m_exitView = tableView(m_exits, content);
    m_monthView = tableView(m_months, content);
    auto *tables = new QHBoxLayout;
    auto *years = new QVBoxLayout, *exits = new QVBoxLayout;
    years->addWidget(heading(QStringLiteral("年度收益"), content));
    years->addWidget(m_yearView);
    exits->addWidget(heading(QStringLiteral("卖出类型"), content));
    exits->addWidget(m_exitView);
    tables->addLayout(years, 3);
    tables->addLayout(exits, 2);
    layout->addLayout(tables);
    layout->addWidget(heading(QStringLiteral("月度收益"), content));
    layout->addWidget(m_monthView);

    m_histogram = new QCustomPlot(content);
    m_histogram->setMinimumHeight(200);
    layout->addWidget(heading(QStringLiteral("收益分布"), content));
    layout->addWidget(m_histogram);
}

void ReportPage::setReport(StrategyReport report)
{
    m_report = std::move(report);
    fillFigures();
    fillYears();
    fillMonths();
    fillExits();
    ReportPlots::plotAccount(m_account, m_report);
    m_account->replot();
    ReportPlots::plotHistogram(m_histogram, m_report);
    m_histogram->replot();
}

void ReportPage::fillFigures()
{
    while (QLayoutItem *item = m_figures->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const auto figures = keyFigureTexts(m_report);
    for (size_t i = 0; i < figures.size(); ++i) {
        const int row = int(i / 4), column = int(i % 4) * 2;
        auto *label = new QLabel(figures[i].first, this);
        label->setStyleSheet(QStringLiteral("color: #666"));
        auto *value = new QLabel(QStringLiteral("<b>%1</b>").arg(figures[i].second.toHtmlEscaped()), this);
        value->setObjectName(figures[i].first);
        value->setTextFormat(Qt::RichText);
        m_figures->addWidget(label, row, column);
        m_figures->addWidget(value, row, column + 1);
    }
}

QString ReportPage::figureText(const QString &label) const
{
    const auto *value = findChild<QLabel *>(label);
    return value ? QTextDocumentFragment::fromHtml(value->text()).toPlainText() : QString();
}

void ReportPage::fillYears()
{
    m_years->clear();
    m_years->setHorizontalHeaderLabels({QStringLiteral("年份"), QStringLiteral("交易次数"),
                                        QStringLiteral("胜率"), QStringLiteral("平均收益"),
                                        QStringLiteral("账户收益"), QStringLiteral("市场收益")});
    for (const YearFigures &y : m_report.byYear)
        m_years->appendRow({new QStandardItem(y.year), countItem(y.count), figureItem(y.winRate, true, false),
                            figureItem(y.averageReturn), figureItem(y.accountReturn),
                            figureItem(y.marketReturn)});
}

// Years down, months across, each cell shaded by how much the account made or lost.
void ReportPage::fillMonths()
{
    m_months->clear();
    QStringList head{QStringLiteral("年份")};
    for (int month = 1; month <= 12; ++month)
        head << QStringLiteral("%1月").arg(month);
    m_months->setHorizontalHeaderLabels(head);
    std::map<QString, std::map<int, Figure>> years;
    for (const MonthFigures &m : m_report.monthly)
        years[m.month.left(4)][m.month.mid(5, 2).toInt()] = m.accountReturn;
    for (const auto &[year, months] : years) {
        QList<QStandardItem *> row{new QStandardItem(year)};
        for (int month = 1; month <= 12; ++month) {
            const auto found = months.find(month);
            QStandardItem *item =
                found == months.end() ? new QStandardItem : figureItem(found->second, true, false);
            if (found != months.end() && found->second && *found->second != 0) {
                QColor shade = signColour(found->second);
                shade.setAlphaF(float(std::min(std::abs(*found->second) / 10.0, 1.0) * 0.55 + 0.08));
                item->setBackground(shade);
            }
            row << item;
        }
        m_months->appendRow(row);
    }
}

void ReportPage::fillExits()
{
    m_exits->clear();
    m_exits->setHorizontalHeaderLabels({QStringLiteral("卖出类型"), QStringLiteral("次数"),
                                        QStringLiteral("胜率"), QStringLiteral("平均收益")});
    for (const ExitFigures &e : m_report.byExit)
        m_exits->appendRow({new QStandardItem(tradeExitText(e.exit)), countItem(e.count),
                            figureItem(e.winRate, true, false), figureItem(e.averageReturn)});
}

QString ReportPage::exportTo(const QString &dir) const
{
    return writeReportFiles(dir, m_report, ReportPlots::render(m_report));
}

void ReportPage::exportReport()
{
    const QString dir = QFileDialog::getExistingDirectory(this, QStringLiteral("导出报告"));
    if (dir.isEmpty())
        return;
    const QString error = exportTo(dir);
    if (!error.isEmpty()) {
        OrvelStockMsgBox box(QStringLiteral("警告"), error, this);
        box.exec();
    }
}
