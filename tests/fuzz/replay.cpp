// SPDX-License-Identifier: MIT
#include "fuzz.h"

#include <QDir>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

// Replaces libFuzzer: calls the target with each file of a folder.
int main(int argc, char **argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    const QFileInfoList files = QDir(QString::fromLocal8Bit(argv[1])).entryInfoList(QDir::Files);
    for (const QFileInfo &info : files) {
        std::fprintf(stderr, "%s\n", qPrintable(info.filePath()));
        QFile file(info.filePath());
        require(file.open(QFile::ReadOnly), "the file can be read");
        fuzz(file.readAll());
    }
    return files.isEmpty() ? 1 : 0;
}
