#pragma once

#include "DataLoader.h"

// Cycles through its URL list until destroyed, for quotes that are watched
// rather than fetched once.
class LoopDataLoader : public DataLoader {
    Q_OBJECT
public:
    using DataLoader::DataLoader;

public slots:
    void startNextDownload() override;
};
