#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <chrono>

// Finds out for how long the GUI thread served no event: the longest time between two beats of a fast timer.
class StallMeter : public QObject {
    Q_OBJECT

 public:
    StallMeter();

    // The longest since the last call; begins anew.
    std::chrono::milliseconds takeLongest();

 private:
    void beat();

    QTimer m_timer;
    QElapsedTimer m_sinceBeat;
    qint64 m_longestMs = 0;
};
