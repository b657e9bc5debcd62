#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <deque>
#include <functional>
#include <optional>

#include "InputDriver.h"

// Walks through the screens as a customer would, for demonstrations and tests: finds its targets by object
// name, waits until they stand still, and touches them with real input events. Rounds follow each other
// until the application ends.
class Tour : public QObject {
    Q_OBJECT

 public:
    // Without a directory no pictures are saved. `window` outlives the tour.
    Tour(QQuickWindow* window, std::optional<QString> screenshotDir);

    void start();

 signals:
    void roundFinished(int round);
    // A target did not turn up in time; nothing more will happen.
    void failed(const QString& step);

 private:
    // One thing to do, tried again on every beat until it says that it is done.
    struct Step {
        QString name;
        std::function<bool()> advance;
    };

    void planRound();
    void planLogin();
    void planAccounts();
    void planTransfer();
    void planCards();
    void planProfile();

    void tap(const QString& target);
    void type(const QString& text);
    void strike(Qt::Key key);
    void drag(const QString& target, qreal distance);
    void look(const QString& landmark);

    void beat();
    std::optional<QPointF> restingPlace(const QString& objectName);
    void saveScreenshot(const QString& name);

    QQuickWindow* m_window;
    std::optional<QString> m_screenshotDir;
    InputDriver m_input;
    QTimer m_timer;
    QElapsedTimer m_stepTime;
    std::deque<Step> m_steps;
    std::optional<QPointF> m_lastPlace;
    int m_round = 0;
};
