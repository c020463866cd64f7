#include "Commands.h"

#include "CliOutput.h"

int Commands::refuseOptions(const QString &problem, const QStringList &arguments)
{
    CliOutput::err(problem + QLatin1Char('\n'));
    return arguments.contains(QStringLiteral("--help")) ? Ok : UsageError;
}
