#pragma once

#include "StockInterface.h"

// The adjusted history K-line request of the QQ quote service. Its reply is
// the K-line text of the data files, wrapped in the service's JSON.
class StockQQHistoryInterface : public StockInterface {
public:
    enum Option { CodeOption = 0, AdjustmentOption = 1, PeriodOption = 2 };

    // `host` is scheme and host ("https://example.com"); empty means
    // defaultHost().
    explicit StockQQHistoryInterface(const QString &host = {});

    QStringList buildUrls(const QStringList &codes) override;
    StockSeries parse(QByteArrayView body) override;
    void setOption(int index, const QString &value) override;

    QString code() const { return m_code; }
    QString adjustment() const { return m_adjustment; }
    QString period() const { return m_period; }
    QString host() const { return m_host; }

    // The public service, unless ORVEL_QUOTE_HOST names another one.
    static QString defaultHost();
    // "sh" + code for codes starting with "6", else "sz" + code.
    static QString marketSymbol(const QString &code);
    static bool isAdjustment(const QString &value);
    static bool isPeriod(const QString &value);

private:
    QString urlFor(const QString &code) const;

    QString m_host;
    QString m_code;
    QString m_adjustment = QStringLiteral("hfq");
    QString m_period = QStringLiteral("day");
};
