// zd_make_icons: paints Zephyrdock's icon into a freedesktop icon theme tree,
// <folder>/<n>x<n>/apps/<name>.png for each usual size, so that `cmake --install` can put it
// where desktops look for it.
//
// Usage: zd_make_icons <folder> <name>

#include <QDir>
#include <QGuiApplication>
#include <cstdio>

#include "AppIcon.h"

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: zd_make_icons <folder> <name>\n");
        return 2;
    }
    for (int size : {16, 24, 32, 48, 64, 128, 256, 512}) {
        const QString dir = QString("%1/%2x%2/apps").arg(QString::fromLocal8Bit(argv[1])).arg(size);
        if (!QDir().mkpath(dir) || !zd::render::drawAppIcon(size).save(
                                       dir + "/" + QString::fromLocal8Bit(argv[2]) + ".png")) {
            std::fprintf(stderr, "zd_make_icons: cannot write %s\n", qPrintable(dir));
            return 1;
        }
    }
    return 0;
}
