#pragma once

#include "market/Stock.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

// A quote service seen from the download queues: it turns stock codes into
// request URLs and one reply body into bars.
class StockInterface {
public:
    virtual ~StockInterface();

    // Failures of the requests made for this interface end up here.
    virtual void debugOutput(const QString &text);

    // One URL per code, in the order of `codes`.
    virtual QStringList buildUrls(const QStringList &codes) = 0;

    // The bars of one reply body, oldest first as the body lists them.
    virtual StockSeries parse(QByteArrayView body) = 0;

    // Settings are addressed by index so that queues and front ends can
    // configure any interface alike; unknown indexes are ignored.
    virtual void setOption(int index, const QString &value);
};
