#pragma once

#include "DataLoader.h"

// Walks its URL list once and then reports sendOK().
class IterateDataLoader : public DataLoader {
    Q_OBJECT
public:
    using DataLoader::DataLoader;

public slots:
    void startNextDownload() override;
};
