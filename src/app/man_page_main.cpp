// Writes the tessary(1) page to the file named by the only argument (build time).
#include "app/man_page.h"

#include <QSaveFile>

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: tessary_man_page OUTPUT\n", stderr);
        return 2;
    }
    QSaveFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    using namespace tessary;
    file.write(ManPage::render(CommandLine::commands(), CommandLine::version()).toUtf8());
    return file.commit() ? 0 : 1;
}
