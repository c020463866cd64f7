#pragma once

#include "report/StrategyReport.h"

#include <QWidget>

class QCustomPlot;
class QGridLayout;
class QPushButton;
class QStandardItemModel;
class QTableView;

// The results window's 统计 page: the key figures, the account against the
// market with its drawdown below, yearly and monthly returns, the exits and
// the spread of returns. 导出报告 writes the same files as the command line.
class ReportPage : public QWidget {
    Q_OBJECT
public:
    explicit ReportPage(QWidget *parent = nullptr);

    void setReport(StrategyReport report);
    const StrategyReport &report() const { return m_report; }

    // The text shown beside a key figure's label; empty when there is none.
    QString figureText(const QString &label) const;
    QTableView *yearTable() const { return m_yearView; }
    QTableView *monthTable() const { return m_monthView; }
    QTableView *exitTable() const { return m_exitView; }
    QCustomPlot *accountPlot() const { return m_account; }

    // Writes the report files with their charts; an error text, or empty.
    QString exportTo(const QString &dir) const;

public slots:
    // Asks for a folder, then writes the report files into it.
    void exportReport();

private:
    void fillFigures();
    void fillYears();
    void fillMonths();
    void fillExits();

    StrategyReport m_report;
    QGridLayout *m_figures;
    QCustomPlot *m_account;
    QCustomPlot *m_histogram;
    QStandardItemModel *m_years;
    QStandardItemModel *m_months;
    QStandardItemModel *m_exits;
    QTableView *m_yearView;
    QTableView *m_monthView;
    QTableView *m_exitView;
    QPushButton *m_export;
};
