#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

// `$name` placeholders (letters, digits and underscores after the "$") in a
// script's `buy.`, `sale.` and `config.` lines, filled in before a sweep
// compiles each combination. Comments and every other line are left alone,
// so a "$" in a note never asks for a value.
namespace ScriptPlaceholders {

// The names used, without the "$", in order of first use, each once.
QStringList names(const QString &script);

// The script with each placeholder replaced by its value; placeholders
// without a value stay as written. Nothing else changes, line ends included.
QString substitute(const QString &script, const QHash<QString, QString> &values);

// Why the `given` names do not fit the script's: those without a value and
// those the script does not use; empty when they fit.
QString mismatch(const QStringList &used, const QStringList &given);

// A warning for a script run as it is while it still holds placeholders,
// or an empty text when it holds none.
QString leftoverWarning(const QString &script);

} // namespace ScriptPlaceholders
