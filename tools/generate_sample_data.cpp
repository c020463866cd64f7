// orvel-sample-data: writes a made-up A-share market as K-line files.
//
// The bundled data/ directory is exactly the output of
//     orvel-sample-data --out data
// (50 stocks, 750 trading days from 2021-01-04, the default seed); run it
// again from the repository root to reproduce it byte for byte.

#include "SampleMarket.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

namespace {

int fail(const QString &message)
{
    QTextStream(stderr) << "orvel-sample-data: " << message << Qt::endl;
    return 2;
}

bool readCount(const QCommandLineParser &parser, const QString &name, int &value)
{
    if (!parser.isSet(name))
        return true;
    bool ok = false;
    value = parser.value(name).toInt(&ok);
    return ok;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("orvel-sample-data"));
    SampleMarket::Options options;

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes a deterministic sample market of daily K-line files."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("out"), QStringLiteral("Directory to write the stock files into."),
         QStringLiteral("DIR")},
        {QStringLiteral("stocks"), QStringLiteral("Number of stocks (default %1).").arg(options.stocks),
         QStringLiteral("N")},
        {QStringLiteral("days"),
         QStringLiteral("Trading days of the calendar (default %1).").arg(options.days), QStringLiteral("D")},
        {QStringLiteral("seed"), QStringLiteral("Seed of the market (default %1).").arg(options.seed),
         QStringLiteral("S")},
        {QStringLiteral("start"), QStringLiteral("First calendar day, yyyy-MM-dd (default 2021-01-04)."),
         QStringLiteral("DATE")},
        {QStringLiteral("jobs"), QStringLiteral("Writer threads (default: one per core)."),
         QStringLiteral("N")},
    });
    parser.process(app);

    if (!parser.isSet(QStringLiteral("out")))
        return fail(QStringLiteral("--out DIR is required"));
    if (!readCount(parser, QStringLiteral("stocks"), options.stocks) ||
        !readCount(parser, QStringLiteral("days"), options.days) ||
        !readCount(parser, QStringLiteral("jobs"), options.jobs))
        return fail(QStringLiteral("--stocks, --days and --jobs take whole numbers"));
    if (parser.isSet(QStringLiteral("seed"))) {
        bool ok = false;
        options.seed = parser.value(QStringLiteral("seed")).toULongLong(&ok);
        if (!ok)
            return fail(QStringLiteral("--seed takes a non-negative whole number"));
    }
    if (parser.isSet(QStringLiteral("start"))) {
        options.start = QDate::fromString(parser.value(QStringLiteral("start")), Qt::ISODate);
        if (!options.start.isValid())
            return fail(QStringLiteral("--start takes a date written yyyy-MM-dd"));
    }

    const QString out = parser.value(QStringLiteral("out"));
    const std::string error = SampleMarket::writeMarket(QFile::encodeName(out).toStdString(), options);
    if (!error.empty()) {
        QTextStream(stderr) << "orvel-sample-data: " << QString::fromStdString(error) << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << "wrote " << options.stocks << " stocks, " << options.days << " trading days from "
                        << options.start.toString(Qt::ISODate) << " to " << out << Qt::endl;
    return 0;
}
