#include "StockInterface.h"

#include <QDebug>

StockInterface::~StockInterface() = default;

void StockInterface::debugOutput(const QString &text) { qDebug().noquote() << text; }

void StockInterface::setOption(int, const QString &) {}
