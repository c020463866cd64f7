#include "Commands.h"

#include "CliOutput.h"

#include <QCommandLineParser>

int Commands::refuseOptions(const QString &problem, const QStringList &arguments)
{
    CliOutput::err(problem + QLatin1Char('\n'));
    return arguments.contains(QStringLiteral("--help")) ? Ok : UsageError;
}

QString Commands::parse(QCommandLineParser &parser, const QStringList &arguments)
{
    if (!parser.parse(arguments))
        return parser.errorText();
    if (parser.isSet(QStringLiteral("help")))
        return parser.helpText();
    return {};
}

QString Commands::parseOne(QCommandLineParser &parser, const QStringList &arguments, const QString &missing,
                           QString &value)
{
    if (QString problem = parse(parser, arguments); !problem.isEmpty())
        return problem;
    if (parser.positionalArguments().size() != 1)
        return missing + QLatin1Char('\n') + parser.helpText();
    value = parser.positionalArguments().constFirst();
    return {};
}

QString Commands::parseScript(QCommandLineParser &parser, const QStringList &arguments, QString &script)
{
    return parseOne(parser, arguments, QStringLiteral("需要一个脚本文件 / expected one SCRIPT"), script);
}
