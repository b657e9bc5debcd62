#include "Control.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

namespace {

constexpr qsizetype longestLine = 1024;

}  // namespace

Control::Control(QHash<QByteArray, Command> commands)
    : m_commands(std::move(commands)), m_input(STDIN_FILENO, QSocketNotifier::Read) {
    connect(&m_input, &QSocketNotifier::activated, this, &Control::read);
}

void Control::read() {
    std::array<char, longestLine> bytes{};
    // Does not block: called only when there is something to read, or the end.
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (count <= 0) return m_input.setEnabled(false);
    m_line.append(bytes.data(), count);
    for (qsizetype end = m_line.indexOf('\n'); end >= 0; end = m_line.indexOf('\n')) {
        const QByteArray line = m_line.first(end).trimmed();
        m_line.remove(0, end + 1);
        carryOut(line);
    }
    if (m_line.size() > longestLine) m_line.clear();
}

void Control::carryOut(const QByteArray& line) const {
    if (line.isEmpty()) return;
    const qsizetype space = line.indexOf(' ');
    const auto command = m_commands.constFind(space < 0 ? line : line.first(space));
    if (command != m_commands.constEnd())
        return (*command)(space < 0 ? QString() : QString::fromUtf8(line.sliced(space + 1)));
    std::fprintf(stderr, "merovanta-bank: unknown command \"%s\"\n", line.constData());
}
