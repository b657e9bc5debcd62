#include "Tour.h"

#include <QDir>

#include "FindItem.h"

using namespace std::chrono_literals;

namespace {

constexpr auto beatInterval = 40ms;
constexpr qint64 stepTimeoutMs = 10000;
// Longer than a second: whoever follows the screen looks at the page in front once a second.
constexpr qint64 lookMs = 1500;
constexpr int tapBeats = 3;
constexpr int dragBeats = 14;

}  // namespace

Tour::Tour(QQuickWindow* window, std::optional<QString> screenshotDir)
    : m_window(window), m_screenshotDir(std::move(screenshotDir)), m_input(window) {
    m_timer.setInterval(beatInterval);
    connect(&m_timer, &QTimer::timeout, this, &Tour::beat);
}

void Tour::start() {
    if (m_screenshotDir) QDir().mkpath(*m_screenshotDir);
    planRound();
    m_stepTime.start();
    m_timer.start();
}

void Tour::planRound() {
    planLogin();
    planAccounts();
    planTransfer();
    planCards();
    planProfile();
}

void Tour::planLogin() {
    look(QStringLiteral("loginPage"));
    tap(QStringLiteral("userNameInput"));
    type(QStringLiteral("m.hollis"));
    strike(Qt::Key_Tab);
    type(QStringLiteral("Willow-4471"));
    look(QStringLiteral("passwordInput"));
    // Signing in as the customer would begin another session.
    tap(QStringLiteral("demoButton"));
}

void Tour::planAccounts() {
    look(QStringLiteral("accountsPage"));
    drag(QStringLiteral("accountsList"), -420);
    drag(QStringLiteral("accountsList"), -420);
    look(QStringLiteral("accountsList"));
    drag(QStringLiteral("accountsList"), 480);
    drag(QStringLiteral("accountsList"), 480);
    drag(QStringLiteral("accountsList"), 480);
    tap(QStringLiteral("accountRow0"));
    look(QStringLiteral("accountPage"));
    drag(QStringLiteral("accountTransactions"), -300);
    tap(QStringLiteral("backButton"));
    look(QStringLiteral("accountsPage"));
}

void Tour::planTransfer() {
    tap(QStringLiteral("tabTransfer"));
    look(QStringLiteral("transferPage"));
    tap(QStringLiteral("recipientInput"));
    type(QStringLiteral("Nora Whitfield"));
    strike(Qt::Key_Tab);
    type(QStringLiteral("4111111111111111"));
    strike(Qt::Key_Tab);
    type(QStringLiteral("125.50"));
    strike(Qt::Key_Tab);
    type(QStringLiteral("Garden tools"));
    look(QStringLiteral("referenceInput"));
    tap(QStringLiteral("continueButton"));
    look(QStringLiteral("confirmTransferDialog"));
    tap(QStringLiteral("confirmButton"));
    look(QStringLiteral("transferDonePage"));
    tap(QStringLiteral("doneButton"));
}

void Tour::planCards() {
    tap(QStringLiteral("tabCards"));
    look(QStringLiteral("cardsPage"));
    tap(QStringLiteral("bankCard"));
    look(QStringLiteral("cardBack"));
    tap(QStringLiteral("bankCard"));
    look(QStringLiteral("cardFront"));
    tap(QStringLiteral("freezeToggle"));
    look(QStringLiteral("freezeToggle"));
    tap(QStringLiteral("freezeToggle"));
}

void Tour::planProfile() {
    tap(QStringLiteral("tabProfile"));
    look(QStringLiteral("profilePage"));
    drag(QStringLiteral("profileScroll"), -400);
    tap(QStringLiteral("signOutButton"));
}

void Tour::tap(const QString& target) {
    m_steps.push_back(
        {QStringLiteral("tap ") + target, [this, target, place = QPointF(), beats = 0]() mutable {
             if (beats == 0) {
                 const auto resting = restingPlace(target);
                 if (!resting) return false;
                 place = *resting;
                 m_input.press(place);
             }
             if (++beats < tapBeats) return false;
             m_input.release(place);
             return true;
         }});
}

void Tour::type(const QString& text) {
    m_steps.push_back({QStringLiteral("type"), [this, text, typed = 0]() mutable {
                           m_input.type(text.at(typed));
                           return ++typed == text.size();
                       }});
}

void Tour::strike(Qt::Key key) {
    m_steps.push_back({QStringLiteral("strike a key"), [this, key] {
                           m_input.strike(key);
                           return true;
                       }});
}

void Tour::drag(const QString& target, qreal distance) {
    m_steps.push_back(
        {QStringLiteral("drag ") + target, [this, target, distance, from = QPointF(), beats = 0]() mutable {
             if (beats == 0) {
                 const auto resting = restingPlace(target);
                 if (!resting) return false;
                 from = *resting - QPointF(0, distance / 2);
                 m_input.press(from);
             }
             ++beats;
             const QPointF to = from + QPointF(0, distance * beats / dragBeats);
             m_input.move(to);
             if (beats < dragBeats) return false;
             m_input.release(to);
             return true;
         }});
}

void Tour::look(const QString& landmark) {
    m_steps.push_back(
        {QStringLiteral("look at ") + landmark, [this, landmark, since = QElapsedTimer()]() mutable {
             if (!since.isValid()) {
                 if (restingPlace(landmark)) since.start();
                 return false;
             }
             if (since.elapsed() < lookMs) return false;
             saveScreenshot(landmark);
             return true;
         }});
}

void Tour::beat() {
    if (m_steps.empty()) {
        emit roundFinished(++m_round);
        m_screenshotDir.reset();
        planRound();
        m_stepTime.restart();
    }
    if (m_steps.front().advance()) {
        m_steps.pop_front();
        m_lastPlace.reset();
        m_stepTime.restart();
    } else if (m_stepTime.elapsed() > stepTimeoutMs) {
        m_timer.stop();
        emit failed(m_steps.front().name);
    }
}

// The middle of the target once it can be touched: ready, inside the window, and where it was a beat ago.
std::optional<QPointF> Tour::restingPlace(const QString& objectName) {
    const auto* item = findVisibleItem(*m_window, objectName);
    const auto before = std::exchange(m_lastPlace, std::nullopt);
    if (!item || !isReady(*item)) return std::nullopt;
    const QPointF middle = item->mapToScene({item->width() / 2, item->height() / 2});
    if (!QRectF(QPointF(), m_window->size()).contains(middle)) return std::nullopt;
    m_lastPlace = middle;
    return before == middle ? m_lastPlace : std::nullopt;
}

void Tour::saveScreenshot(const QString& name) {
    if (!m_screenshotDir) return;
    const auto number = QDir(*m_screenshotDir).entryList({QStringLiteral("*.png")}).size() + 1;
    const auto file = QStringLiteral("%1-%2.png").arg(number, 2, 10, QLatin1Char('0')).arg(name);
    if (!m_window->grabWindow().save(QDir(*m_screenshotDir).filePath(file)))
        qWarning("cannot save %s in %s", qPrintable(file), qPrintable(*m_screenshotDir));
}
