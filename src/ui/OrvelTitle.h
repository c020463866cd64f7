#pragma once

#include <QString>

// The version every window shows, and the title of the main and results windows.
inline QString orvelVersion() { return QStringLiteral(ORVEL_VERSION); }

inline QString orvelWindowTitle() { return QStringLiteral("Orvel股票量化分析软件%1").arg(orvelVersion()); }
