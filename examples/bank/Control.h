#pragma once

#include <QByteArray>
#include <QHash>
#include <QSocketNotifier>
#include <functional>

// Carries out commands that come as lines on standard input, for demonstrations and tests: a word, and after
// a space whatever it is about.
class Control : public QObject {
    Q_OBJECT

 public:
    using Command = std::function<void(const QString& argument)>;

    explicit Control(QHash<QByteArray, Command> commands);

 private:
    void read();
    void carryOut(const QByteArray& line) const;

    QHash<QByteArray, Command> m_commands;
    QSocketNotifier m_input;
    QByteArray m_line;
};
