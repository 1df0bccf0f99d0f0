// quorvane_icon: draws the app's icon, the whale of the menu-bar title, as a PNG of one size.
#include "gui/MarkIcon.h"
#include "menu/StatusTitle.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QImage>
#include <QString>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: quorvane_icon SIZE FILE.png\n");
        return 2;
    }
    // Drawn without a display, at build time.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    bool isNumber = false;
    const int size = QByteArray(argv[1]).toInt(&isNumber);
    if (!isNumber || size < 8 || size > 1024) {
        std::fprintf(stderr, "quorvane_icon: SIZE must be from 8 to 1024\n");
        return 2;
    }
    const QString mark = QString::fromUtf8(quorvane::StatusTitle::kAppMark.data(),
                                           static_cast<qsizetype>(quorvane::StatusTitle::kAppMark.size()));
    if (!quorvane::MarkIcon::render(mark, size).save(QString::fromLocal8Bit(argv[2]), "PNG")) {
        std::fprintf(stderr, "quorvane_icon: could not write %s\n", argv[2]);
        return 1;
    }
    return 0;
}
