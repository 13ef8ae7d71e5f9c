#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <cstdio>
#include <cstring>

#include "tests/ui/sample_forms.h"

namespace {

bool save(const QImage& image, const QString& folder, const char* name, const char* suffix) {
    const QString path = folder + QLatin1Char('/') + QLatin1String(name) + QLatin1String(suffix) + QStringLiteral(".png");
    const bool saved = image.save(path);
    std::printf("%s %s\n", saved ? "written:" : "NOT written:", qPrintable(path));
    return saved;
}

/// The windows as the manual shows them, at 100 % and 200 %.
int writePictures(const QString& folder) {
    using namespace tessarel::uitest;
    bool ok = QDir().mkpath(folder);
    for (const auto& [scale, suffix] : {std::pair(1.0, ""), std::pair(2.0, "@2x")}) {
        Stage stage(scale);
        if (!stage.theme.hasSegments()) {
            std::fprintf(stderr, "The segment font is missing: the pictures would not be right.\n");
            return 1;
        }
        stage.showCd().showPlaying();
        ok = save(picture(stage.window("CDForm")), folder, "audio-cd", suffix) && ok;
        stage.showWaiting();
        ok = save(picture(stage.window("CD1st")), folder, "waiting", suffix) && ok;
    }
    return ok ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc == 3 && std::strcmp(argv[1], "--pictures") == 0) {
        return writePictures(QString::fromLocal8Bit(argv[2]));
    }
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
