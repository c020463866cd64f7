#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

// The adjusted history K-line request of the QQ quote service. Its reply is
// the K-line text of the data files, wrapped in the service's JSON.
class StockQQHistoryInterface {
public:
    enum Option { AdjustmentOption = 1, PeriodOption = 2 };

    // `host` is scheme and host ("https://example.com"); empty means
    // defaultHost().
    explicit StockQQHistoryInterface(const QString &host = {});

    // One URL per code, in the order of `codes`.
    QStringList buildUrls(const QStringList &codes) const;
    // Unknown indexes and values outside the allowed ones are ignored.
    void setOption(int index, const QString &value);

    // Why `body` is not the service's answer for `code` (an error page,
    // another stock's data), empty when it is. Its days are the K-line text
    // of a data file.
    // The adjustment ("hfq", "qfq" or "bfq") a saved reply holds, read from its
    // first bytes; empty for files of other origins.
    static QString adjustmentOfReply(QByteArrayView head);
    static QString replyProblem(QByteArrayView body, const QString &code);

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
    QString m_adjustment = QStringLiteral("hfq");
    QString m_period = QStringLiteral("day");
};
