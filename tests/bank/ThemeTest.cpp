#include <gmock/gmock.h>

#include <QtGui/QColor>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>
#include <QtQml/QQmlEngine>
#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// The theme of the example app in a process of its own.
class Theme {
 public:
    Theme() : mApplication(mCount, mArguments) {
        mTheme = mEngine.singletonInstance<QObject*>(
            qmlRegisterSingletonType(QUrl::fromLocalFile(QStringLiteral(MEROVANTA_BANK_QML "/Theme.qml")),
                                     "BankTheme", 1, 0, "Theme"));
    }

    /// As the system does while the application runs.
    void turn(bool isDark) {
        QPalette palette;
        palette.setColor(QPalette::Window, isDark ? QColor(20, 20, 20) : QColor(240, 240, 240));
        QGuiApplication::setPalette(palette);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QColor colour(const char* name) const {
        const QVariant value = mTheme == nullptr ? QVariant() : mTheme->property(name);
        EXPECT_TRUE(value.isValid()) << name;
        return QColor::fromRgb(value.value<QColor>().rgb());
    }

 private:
    int mCount = 1;
    char mName[5] = "test";
    char* mArguments[2] = {mName, nullptr};
    QGuiApplication mApplication;
    QQmlEngine mEngine;
    QObject* mTheme = nullptr;
};

// As the Web Content Accessibility Guidelines define them.
double luminance(const QColor& colour) {
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

struct Pair {
    const char* ground;
    std::vector<const char*> marks;
};

const std::vector<Pair> texts{
    {"background", {"ink", "inkSoft", "inkFaint", "accent", "positive", "danger"}},
    {"surface", {"ink", "inkSoft", "inkFaint", "accent", "positive", "danger"}},
    {"bar", {"accent", "inkFaint"}},
    {"pressed", {"ink", "inkSoft", "positive"}},
    {"accentSoft", {"ink", "inkSoft", "accent"}},
    {"dangerSoft", {"danger"}},
    {"accent", {"accentText"}},
    {"accentPressed", {"accentText"}},
    {"deep", {"deepInk", "deepText"}},
    {"deepControl", {"deepInk"}},
    {"cardLight", {"deepInk"}},
    {"cardDark", {"deepInk"}},
    {"frozenLight", {"deepInk"}},
    {"frozenDark", {"deepInk"}},
    {"cardPaper", {"cardInk"}},
};

// The edges of fields and switches, what is chosen, and rings around what has the focus.
const std::vector<Pair> controls{
    {"background", {"control", "accent", "danger"}},
    {"surface", {"control", "accent", "danger"}},
    {"accentSoft", {"accent"}},
    {"dangerSoft", {"danger"}},
    {"deep", {"deepInk"}},
};

void expectContrasts(const Theme& theme, const std::vector<Pair>& pairs, double least) {
    for (const auto& [ground, marks] : pairs) {
        for (const char* mark : marks)
            EXPECT_GE(contrast(theme.colour(ground), theme.colour(mark)), least) << mark << " on " << ground;
    }
}

TEST(Theme, CanBeReadInTheLightAndInTheDark) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
    Theme theme;
    for (const bool isDark : {false, true, false}) {
        SCOPED_TRACE(isDark ? "dark" : "light");
        theme.turn(isDark);
        EXPECT_EQ(luminance(theme.colour("background")) < 0.5, isDark) << "follows the system";
        expectContrasts(theme, texts, 4.5);
        expectContrasts(theme, controls, 3);
    }
}

}  // namespace
