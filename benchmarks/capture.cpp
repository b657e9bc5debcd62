// One tick of the view monitor on a phone-sized Qt Quick window, beside the plain way to get the same picture
// (grabWindow, QImage::scaled, QImage::save), in the same run. Offscreen with the software backend, or with
// --opengl on the display that there is.
#include <Merovanta/Quick.h>

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <vector>

#include "General/Panoptra/Monitoring/ViewMonitor.h"
#include "Qt/Quick/PlatformQuick.h"

namespace {

using namespace merovanta;
using Microseconds = std::chrono::duration<double, std::micro>;
using SteadyClock = std::chrono::steady_clock;

constexpr auto screenQml = R"(
import QtQuick
import Merovanta
Window {
    id: window
    property int small: 0
    property int full: 0
    visible: true; width: 390; height: 844; color: "#f4f6f8"
    Rectangle { anchors.fill: parent; color: Qt.hsva(window.full % 97 / 97, 0.1, 0.95, 1) }
    Column {
        y: 60 - window.full % 40
        Repeater {
            model: 18
            Item {
                width: 390; height: 44
                Text { x: 16; anchors.verticalCenter: parent.verticalCenter; text: "Payment to shop number " + index; font.pixelSize: 15 }
                Item {
                    x: 290; width: 84; height: 44
                    Rectangle { anchors.fill: parent; color: "white"; Merovanta.tag: 100 + index
                        Text { anchors.centerIn: parent; text: (index * 37.5).toFixed(2) + " EUR"; font.pixelSize: 14 } }
                }
                Rectangle { width: parent.width; height: 1; y: 43; color: "#d8dde3" }
            }
        }
    }
    Text { x: 16; y: 16; text: "Clock " + window.small; font.pixelSize: 20 }
})";

/// Time that the GUI thread has spent in the library.
SteadyClock::duration guiTime{};

/// Runs a task of the library's and counts its time.
void runCounted(const std::function<void()>& task) {
    const auto begin = SteadyClock::now();
    task();
    guiTime += SteadyClock::now() - begin;
}

class CountingMainQueue : public MainQueue {
 public:
    explicit CountingMainQueue(MainQueue& queue) : mQueue(queue) {}
    void async(std::function<void()> task) override {
        mQueue.async([task = std::move(task)] { runCounted(task); });
    }
    [[nodiscard]] bool isCurrent() const override { return mQueue.isCurrent(); }

 private:
    MainQueue& mQueue;
};

/// Timers that fire when they are told to.
class ManualTimers : public TimerFactory {
 public:
    [[nodiscard]] std::unique_ptr<Timer> schedule(Interval interval, bool /*repeats*/,
                                                  std::function<void()> action) override {
        if (interval == seconds(0.3)) tick = std::move(action);
        return std::make_unique<Timer>();
    }
    std::function<void()> tick;
};

/// The toolkit's platform with the timers and the main queue above.
class MeasuredPlatform : public Platform {
 public:
    Application& application() override { return mInner.application(); }
    ScreenCapture& screenCapture() override { return mInner.screenCapture(); }
    TapRecognizerFactory& tapRecognizers() override { return mInner.tapRecognizers(); }
    TapPlayer& tapPlayer() override { return mInner.tapPlayer(); }
    ImageOverlayFactory& imageOverlays() override { return mInner.imageOverlays(); }
    AlertFactory& alerts() override { return mInner.alerts(); }
    WidgetViewFactory& widgets() override { return mInner.widgets(); }
    CoverViewFactory& coverViews() override { return mInner.coverViews(); }
    WebViewFactory* webViews() override { return mInner.webViews(); }
    DocumentPreviewFactory* documentPreviews() override { return mInner.documentPreviews(); }
    MainQueue& mainQueue() override { return mMainQueue; }
    WorkQueue& workQueue() override { return mInner.workQueue(); }
    ManualTimers& timers() override { return mTimers; }
    Clock& clock() override { return mInner.clock(); }
    Random& random() override { return mInner.random(); }
    HttpSession& httpSession() override { return mInner.httpSession(); }
    WebSocketFactory& webSockets() override { return mInner.webSockets(); }
    UserDefaults& userDefaults() override { return mInner.userDefaults(); }
    FileManager& fileManager() override { return mInner.fileManager(); }
    Bundle& bundle() override { return mInner.bundle(); }

 private:
    quick::PlatformQuick mInner;
    CountingMainQueue mMainQueue{mInner.mainQueue()};
    ManualTimers mTimers;
};

class CountingSender : public MessageSender {
 public:
    CountingSender() : MessageSender(nullptr, nullptr, nullptr) {}
    void connect(const std::string&, std::function<void()>, std::function<void()>) override {}
    void reconnect() override {}
    [[nodiscard]] bool reconnectsByItself() const override { return false; }
    void send(ProtoMessage message, const Callback& callback) override {
        pictures += message.screenshotevent_size();
        callback(std::nullopt);
    }
    [[nodiscard]] bool reportsConnection() const override { return false; }
    [[nodiscard]] const char* typeName() const override { return "CountingSender"; }
    int pictures = 0;
};

struct Cost {
    Microseconds gui;
    Microseconds total;
};

struct Bench {
    QQuickWindow& window;
    ManualTimers& timers;
    std::shared_ptr<CountingSender> sender;

    /// Lets the host paint what it changed, and finish.
    static void settle() {
        const auto end = SteadyClock::now() + std::chrono::milliseconds(40);
        while (SteadyClock::now() < end)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }

    Cost tick(bool sends) const {
        const int wanted = sender->pictures + (sends ? 1 : 0);
        guiTime = {};
        const auto begin = SteadyClock::now();
        runCounted(timers.tick);
        while (sender->pictures < wanted)
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        const auto end = SteadyClock::now();
        return {guiTime, end - begin};
    }

    Cost plain() const {
        const auto begin = SteadyClock::now();
        const QImage image = window.grabWindow();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.scaled(image.size() / 3, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .save(&buffer, "JPEG", 40);
        const Microseconds time = SteadyClock::now() - begin;
        return {time, time};
    }
};

double percentile(std::vector<Cost> costs, Microseconds Cost::*part, double share) {
    std::sort(costs.begin(), costs.end(), [part](const Cost& a, const Cost& b) { return a.*part < b.*part; });
    return (costs[static_cast<std::size_t>(share * static_cast<double>(costs.size() - 1))].*part).count();
}

/// Peak resident memory in MiB since the last call of forgetPeak().
double peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1024;
    }
    return 0;
}

void forgetPeak() {
    std::ofstream("/proc/self/clear_refs") << 5;
}

void report(const char* name, const std::vector<Cost>& ours, const std::vector<Cost>& plain) {
    const double plainMedian = percentile(plain, &Cost::gui, 0.5);
    const double ourGui = percentile(ours, &Cost::gui, 0.5);
    const double ourTotal = percentile(ours, &Cost::total, 0.5);
    std::printf("%-12s %9.1f %9.1f %9.1f %9.1f %12.2f %12.2f\n", name, ourGui,
                percentile(ours, &Cost::gui, 0.95), ourTotal, plainMedian, plainMedian / ourGui,
                plainMedian / ourTotal);
}

void measure(const char* name, Bench& bench, const char* property, int rounds) {
    std::vector<Cost> ours;
    std::vector<Cost> plain;
    for (int i = 0; i < rounds; ++i) {
        if (property) bench.window.setProperty(property, bench.window.property(property).toInt() + 1);
        Bench::settle();
        ours.push_back(bench.tick(property != nullptr));
        plain.push_back(bench.plain());
        // The plain path has painted: let the monitor see that nothing changed, outside the measurement.
        bench.tick(false);
        Bench::settle();
    }
    report(name, ours, plain);
}

void measureMemory(Bench& bench, int rounds) {
    for (const bool isOurs : {true, false}) {
        forgetPeak();
        const double before = peakMemory();
        for (int i = 0; i < rounds; ++i) {
            bench.window.setProperty("full", bench.window.property("full").toInt() + 1);
            Bench::settle();
            if (isOurs) {
                bench.tick(true);
            } else {
                bench.plain();
            }
        }
        std::printf("peak memory, %s: %.1f MiB above %.1f MiB\n", isOurs ? "monitor" : "plain path",
                    peakMemory() - before, before);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const bool isOpenGL = argc > 1 && std::strcmp(argv[1], "--opengl") == 0;
    if (!isOpenGL) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
    }
    qputenv("QT_SCALE_FACTOR", "3");
    quick::initialize();
    const auto platform = std::make_shared<MeasuredPlatform>();
    platform::install(platform);
    const QGuiApplication app(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData(screenQml);
    auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
    if (!window) return 1;

    const auto configuration = std::make_shared<ApplicationConfigWrapper>();
    IOSConfig lists;
    for (int tag = 100; tag < 118; ++tag)
        lists.blacklist.push_back(std::to_string(tag));
    configuration->config.panoptraConfig->iosConfig = lists;
    const auto sender = std::make_shared<CountingSender>();
    const auto monitor = std::make_shared<ViewMonitor>(configuration);
    monitor->start(sender, [](const auto&) {});
    Bench::settle();

    Bench bench{*window, platform->timers(), sender};
    bench.tick(true);
    std::printf(
        "%d x %d points, scale %.0f; microseconds, medians unless stated; ratios are plain / monitor\n",
        window->width(), window->height(), window->effectiveDevicePixelRatio());
    std::printf("%-12s %9s %9s %9s %9s %12s %12s\n", "tick", "GUI", "GUI p95", "total", "plain", "ratio GUI",
                "ratio total");
    measure("unchanged", bench, nullptr, 100);
    measure("small", bench, "small", 100);
    measure("full", bench, "full", 100);
    measureMemory(bench, 30);
    monitor->stop();
    return 0;
}
