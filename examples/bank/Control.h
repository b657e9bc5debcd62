#pragma once

#include <QByteArray>
#include <QHash>
#include <QSocketNotifier>
#include <functional>

// Carries out commands that come as lines on standard input, for demonstrations and tests.
class Control : public QObject {
    Q_OBJECT

 public:
    using Command = std::function<void()>;

    explicit Control(QHash<QByteArray, Command> commands);

 private:
    void read();
    void carryOut(const QByteArray& line) const;

    QHash<QByteArray, Command> m_commands;
    QSocketNotifier m_input;
    QByteArray m_line;
};
