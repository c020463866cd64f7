#include "SweepDialog.h"

#include "SweepResultModel.h"
#include "script/ScriptPlaceholders.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>
#include <QtConcurrent>

#include <qcustomplot.h>

namespace {

// A grid beyond this is most likely a typing mistake, as on the command line.
constexpr qint64 kLargeGrid = 100000;

} // namespace

SweepDialog::SweepDialog(const QString &script, QWidget *parent)
    : QDialog(parent), m_script(script), m_names(ScriptPlaceholders::names(script)),
      m_key(new QComboBox(this)), m_start(new QPushButton(QStringLiteral("开始"), this)),
      m_cancel(new QPushButton(QStringLiteral("取消"), this)), m_progress(new QProgressBar(this)),
      m_status(new QLabel(this)), m_model(new SweepResultModel(this)),
      m_proxy(new QSortFilterProxyModel(this)), m_table(new QTableView(this)),
      m_heatMap(new QCustomPlot(this))
{
    setWindowTitle(QStringLiteral("参数优化"));
    resize(900, 640);
    auto *ranges = new QFormLayout;
    for (const QString &name : m_names) {
        auto *field = new QLineEdit(this);
        field->setObjectName(QStringLiteral("range_") + name);
        field->setPlaceholderText(QStringLiteral("从:到[:步长] 或 a,b,c"));
        ranges->addRow(QLatin1Char('$') + name, field);
        m_ranges.push_back(field);
    }
    if (m_names.isEmpty())
        ranges->addRow(
            new QLabel(QStringLiteral("脚本中没有 $名称 占位符: 在 buy./sale./config. 行中写 $名称, 如 "
                                      "buy.close,0>ma,$n,0"),
                       this));
    m_key->addItems(SweepTable({}).header());
    m_key->setCurrentText(SweepTable::defaultKey());
    auto *controls = new QHBoxLayout;
    controls->addWidget(new QLabel(QStringLiteral("热图:"), this));
    controls->addWidget(m_key);
    controls->addWidget(m_progress, 1);
    controls->addWidget(m_start);
    controls->addWidget(m_cancel);

    m_proxy->setSourceModel(m_model);
    m_proxy->setSortRole(SweepResultModel::SortRole);
    m_table->setModel(m_proxy);
    m_table->setSortingEnabled(true);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_heatMap->setMinimumSize(320, 240);
    m_heatMap->setVisible(m_names.size() == 2);
    auto *splitter = new QSplitter(this);
    splitter->addWidget(m_table);
    splitter->addWidget(m_heatMap);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(ranges);
    layout->addLayout(controls);
    layout->addWidget(m_status);
    layout->addWidget(splitter, 1);

    m_start->setEnabled(!m_names.isEmpty());
    setRunning(false);
    connect(m_start, &QPushButton::clicked, this, &SweepDialog::start);
    connect(m_cancel, &QPushButton::clicked, this, &SweepDialog::cancel);
    connect(m_table, &QTableView::doubleClicked, this, &SweepDialog::chooseRow);
    connect(m_key, &QComboBox::currentTextChanged, this, &SweepDialog::drawHeatMap);
    connect(&m_watcher, &QFutureWatcher<std::vector<SweepResult>>::progressValueChanged, m_progress,
            &QProgressBar::setValue);
    connect(&m_watcher, &QFutureWatcher<std::vector<SweepResult>>::finished, this, &SweepDialog::onFinished);
}

SweepDialog::~SweepDialog()
{
    if (!m_watcher.isRunning())
        return;
    m_run->cancel();
    m_watcher.waitForFinished();
}

void SweepDialog::setRunning(bool running)
{
    m_start->setEnabled(!running && !m_names.isEmpty());
    m_cancel->setEnabled(running);
    for (QLineEdit *field : m_ranges)
        field->setEnabled(!running);
    m_progress->setVisible(running);
}

void SweepDialog::start()
{
    if (m_watcher.isRunning())
        return;
    SweepGrid grid;
    for (qsizetype i = 0; i < m_names.size(); ++i) {
        const QString problem =
            grid.addAxis(m_names[i] + QLatin1Char('=') + m_ranges[size_t(i)]->text().trimmed());
        if (!problem.isEmpty())
            return m_status->setText(problem);
    }
    if (grid.size() > kLargeGrid)
        return m_status->setText(
            QStringLiteral("共%1种组合, 超过%2, 请缩小范围").arg(grid.size()).arg(kLargeGrid));
    auto run = std::make_shared<SweepRun>(StrategyConfig::configFileText(), m_script, QString(), grid);
    run->setJobs(BacktestRun::defaultJobs());
    m_run = run;
    m_status->setText(QStringLiteral("共%1种组合, 运行中…").arg(grid.size()));
    m_progress->setValue(0);
    setRunning(true);
    m_watcher.setFuture(QtConcurrent::run([run](QPromise<std::vector<SweepResult>> &promise) {
        promise.setProgressRange(0, 100);
        run->setProgress([&promise](int percent) { promise.setProgressValue(percent); });
        promise.addResult(run->run(0, run->grid().size()));
    }));
}

void SweepDialog::cancel()
{
    if (m_run && m_watcher.isRunning())
        m_run->cancel();
}

void SweepDialog::onFinished()
{
    setRunning(false);
    const std::vector<SweepResult> results =
        m_watcher.future().resultCount() > 0 ? m_watcher.result() : std::vector<SweepResult>();
    if (m_run->problem() != SweepRun::Problem::None)
        return m_status->setText(m_run->problemText());
    if (m_run->isCancelled())
        return m_status->setText(QStringLiteral("已取消"));
    SweepTable table(m_names);
    for (const SweepResult &result : results)
        table.add(result);
    m_shown = m_run;
    m_model->setTable(table);
    m_status->setText(QStringLiteral("共%1种组合; 双击一行把它的脚本放进编辑器").arg(results.size()));
    drawHeatMap();
}

void SweepDialog::chooseRow(const QModelIndex &proxyIndex)
{
    // Rows are in grid order: a row's number is its combination's.
    if (m_shown && proxyIndex.isValid())
        emit scriptChosen(m_shown->scriptAt(m_proxy->mapToSource(proxyIndex).row()));
}

// The first name across, the second up; each cell the chosen column's value.
void SweepDialog::drawHeatMap()
{
    m_heatMap->clearPlottables();
    m_heatMap->plotLayout()->clear();
    auto *rect = new QCPAxisRect(m_heatMap);
    m_heatMap->plotLayout()->addElement(0, 0, rect);
    const SweepTable &table = m_model->table();
    const qsizetype column = table.header().indexOf(m_key->currentText());
    if (!m_shown || m_names.size() != 2 || table.rows().empty() || column < 0) {
        m_heatMap->replot();
        return;
    }
    const QStringList across = m_shown->grid().axisValues(0);
    const QStringList up = m_shown->grid().axisValues(1);
    auto *map = new QCPColorMap(rect->axis(QCPAxis::atBottom), rect->axis(QCPAxis::atLeft));
    map->data()->setSize(int(across.size()), int(up.size()));
    map->data()->setRange(QCPRange(0, double(across.size() - 1)), QCPRange(0, double(up.size() - 1)));
    for (size_t row = 0; row < table.rows().size(); ++row) {
        bool ok = false;
        const double value = table.rows()[row][column].toDouble(&ok);
        map->data()->setCell(int(row / size_t(up.size())), int(row % size_t(up.size())),
                             ok ? value : std::numeric_limits<double>::quiet_NaN());
    }
    const auto ticker = [](const QStringList &labels) {
        auto text = QSharedPointer<QCPAxisTickerText>::create();
        for (qsizetype i = 0; i < labels.size(); ++i)
            text->addTick(double(i), labels[i]);
        return text;
    };
    rect->axis(QCPAxis::atBottom)->setTicker(ticker(across));
    rect->axis(QCPAxis::atBottom)->setLabel(QLatin1Char('$') + m_names[0]);
    rect->axis(QCPAxis::atLeft)->setTicker(ticker(up));
    rect->axis(QCPAxis::atLeft)->setLabel(QLatin1Char('$') + m_names[1]);
    auto *scale = new QCPColorScale(m_heatMap);
    m_heatMap->plotLayout()->addElement(0, 1, scale);
    scale->setLabel(m_key->currentText());
    map->setColorScale(scale);
    map->setGradient(QCPColorGradient(QCPColorGradient::gpThermal));
    map->setInterpolate(false);
    map->rescaleDataRange(true);
    rect->axis(QCPAxis::atBottom)->setRange(-0.5, double(across.size()) - 0.5);
    rect->axis(QCPAxis::atLeft)->setRange(-0.5, double(up.size()) - 0.5);
    m_heatMap->replot();
}
