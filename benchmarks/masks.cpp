// The walk that finds what is private in a window, while the scene graph stands still: microseconds of the
// processor a walk, for windows of 1,000 and 10,000 items and for lists of several kinds. Offscreen with the
// software backend, or with --opengl on the display that there is.
#include <Merovanta/Quick.h>

#include <time.h>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "General/Panoptra/Privacy/PrivacyJudge.h"
#include "Qt/Quick/MaskWalkQuick.h"

namespace {

using namespace merovanta;

/// Rows of five items each, of which one has a tag.
constexpr auto screenQml = R"(
import QtQuick
import Merovanta
Window {
    visible: true; width: 390; height: 844
    property int rows: 0
    Column {
        Repeater {
            model: rows
            Item {
                width: 390; height: 44; Merovanta.tag: 100 + index % 7
                Rectangle { anchors.fill: parent; color: "#eee"
                    Text { x: 16; text: "Payment " + index }
                    Text { x: 300; text: (index * 37.5).toFixed(2) } }
                MouseArea { anchors.fill: parent }
            }
        }
    }
})";

struct Case {
    const char* name;
    IOSConfig lists;
    PrivacySettings settings;
};

std::vector<std::string> numbered(const std::string& prefix, int count) {
    std::vector<std::string> names;
    for (int number = 0; number < count; ++number)
        names.push_back(prefix + std::to_string(100'000 + number));
    return names;
}

std::vector<Case> cases() {
    return {
        {"no lists", {}, {}},
        {"20 absent tags", {numbered("", 20), {}}, {}},
        {"20 unknown classes", {{}, numbered("NoSuch", 20)}, {}},
        {"1000 absent entries", {numbered("", 500), numbered("NoSuch", 500)}, {}},
        {"a tag in 1 of 35", {{"103"}, {}}, {}},
        {"class of 2 in 5", {{}, {"Text"}}, {}},
        {"texts by policy", {}, {.masksTexts = true}},
        {"all policies", {}, {.masksTextInputs = true, .masksTexts = true, .masksPictures = true}},
    };
}

int countItems(const QQuickItem& item) {
    int count = 1;
    const auto children = item.childItems();
    for (const QQuickItem* child : children)
        count += countItems(*child);
    return count;
}

/// Of this thread, in microseconds: what else the machine does is not counted.
double processorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

void measure(const QQuickWindow& window) {
    constexpr int rounds = 51;
    std::printf("%d items\n", countItems(*window.contentItem()));
    for (const Case& each : cases()) {
        const auto rules = std::make_shared<PrivacyRules>(each.lists, each.settings);
        std::vector<double> times;
        std::vector<double> comparisons;
        std::size_t areas = 0;
        for (int round = 0; round < rounds; ++round) {
            const double begin = processorTime();
            PrivacyJudge judge(rules);
            quick::MaskWalkQuick walk(window, judge);
            walk.run();
            const double found = processorTime();
            auto geometry = walk.takeGeometry();
            geometry.compareWithScene();
            comparisons.push_back(processorTime() - found);
            times.push_back(found - begin);
            areas = walk.takeAreas().size();
        }
        std::sort(times.begin(), times.end());
        std::sort(comparisons.begin(), comparisons.end());
        std::printf("%-22s median %8.1f  p95 %8.1f  comparison %8.1f  areas %zu\n", each.name,
                    times[rounds / 2], times[rounds * 95 / 100], comparisons[rounds / 2], areas);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || std::strcmp(argv[1], "--opengl") != 0) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
    }
    quick::initialize();
    const QGuiApplication app(argc, argv);
    QQmlEngine engine;
    for (const int rows : {200, 2000}) {
        QQmlComponent component(&engine);
        component.setData(screenQml, {});
        const std::unique_ptr<QObject> made(component.createWithInitialProperties({{"rows", rows}}));
        auto* const window = qobject_cast<QQuickWindow*>(made.get());
        if (window == nullptr) return 1;
        bool isMeasured = false;
        // The first frame, with all nodes made, has been synchronised by then.
        QObject::connect(
            window, &QQuickWindow::afterSynchronizing, window,
            [&] {
                if (std::exchange(isMeasured, true)) return;
                measure(*window);
            },
            Qt::DirectConnection);
        while (!isMeasured) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
            window->update();
        }
    }
    return 0;
}
