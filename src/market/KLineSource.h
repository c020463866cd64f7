#pragma once

#include "StockFileList.h"

#include <QString>

enum class KLineFormat { Default, Tdx, Csv, Auto, Unknown };

// Where the K-lines come from, as plain values: the folder, its format
// ("default", "tdx", "csv" or "auto") and which codes a terminal's folder
// gives ("only" A-share stocks, or "all").
struct KLineSource {
    QString dir = QStringLiteral("data");
    QString format = QStringLiteral("default");
    QString stocks = QStringLiteral("only");

    KLineFormat kind() const;

    // "auto" decided from what the folder holds; other formats as they are.
    KLineFormat resolvedKind() const;

    // The files to read, in the order they are walked. The program's own
    // text files are listed as they always were; day and CSV files are
    // ordered by code, so a converted folder is walked in the same order.
    StockFileList list() const;

    // The format a listed file is read in: "auto" goes by its extension.
    KLineFormat kindOf(const QString &listedPath) const;

    // The code of a listed file: for the program's own files the last six
    // characters of the path, for day and CSV files the six digits in the name.
    QString codeOf(const QString &listedPath) const;
};
