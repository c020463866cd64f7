// Feeds every file of a corpus folder to a fuzz target, so what the fuzzer
// once found stays fixed in every ordinary build.
#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int main(int argc, char *argv[])
{
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir corpus(QString::fromLocal8Bit(argv[i]));
        for (const QString &name : corpus.entryList(QDir::Files)) {
            QFile file(corpus.filePath(name));
            if (!file.open(QIODevice::ReadOnly))
                return 1;
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()),
                                   size_t(bytes.size()));
            ++replayed;
        }
    }
    std::printf("replayed %d inputs\n", replayed);
    return replayed > 0 ? 0 : 1;
}
