#include "FuzzTarget.h"

#include <QDirIterator>
#include <QFile>

#include <cstdio>

const bool CHECK_EVERYTHING = true;

/// Runs a fuzz target over all files of a folder, without a fuzzer.
int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    int count = 0;
    QDirIterator files(QString::fromLocal8Bit(argv[1]), QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "%s: %s\n", qPrintable(file.fileName()),
                         qPrintable(file.errorString()));
            return 1;
        }
        const QByteArray bytes = file.readAll();
        // Named first: after a crash the last line tells which file it was.
        std::printf("%s\n", qPrintable(file.fileName()));
        std::fflush(stdout);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                               static_cast<std::size_t>(bytes.size()));
        ++count;
    }
    std::printf("%d files\n", count);
    return count > 0 ? 0 : 1;
}
