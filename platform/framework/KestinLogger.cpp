// SPDX-License-Identifier: Apache-2.0
#include "platform/framework/KestinLogger.h"

#include <algorithm>
#include <atomic>
#include <cerrno>

#include <unistd.h>

namespace {

constexpr int defaultLevel = KestinLogger::Warning;

int levelOfEnvironment()
{
    bool isNumber = false;
    const int level = qEnvironmentVariableIntValue("KESTIN_LOG_LEVEL", &isNumber);
    return isNumber ? level : defaultLevel;
}

std::atomic<int> &configuredLevel()
{
    static std::atomic<int> level = levelOfEnvironment();
    return level;
}

KestinLogger::Sink &configuredSink()
{
    static KestinLogger::Sink sink;
    return sink;
}

bool isControl(QChar character)
{
    const char16_t code = character.unicode();
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0x2028 || code == 0x2029;
}

QString escaped(QChar character)
{
    switch (character.unicode()) {
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    default:
        return QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    }
}

void writeToStandardError(QByteArray line)
{
    // One write a line: lines of several threads, or of several processes on one pipe, do not mix.
    line += '\n';
    const char *rest = line.constData();
    qsizetype left = line.size();
    while (left > 0) {
        const ssize_t written = ::write(STDERR_FILENO, rest, size_t(left));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return; // nobody reads the log any more, and there is nowhere to say so
        rest += written;
        left -= written;
    }
}

} // namespace

bool KestinLogger::isOn(Level level)
{
    return configuredLevel().load(std::memory_order_relaxed) >= level;
}

void KestinLogger::setLevel(int level)
{
    configuredLevel() = level;
}

void KestinLogger::setSink(Sink sink)
{
    configuredSink() = std::move(sink);
}

QString KestinLogger::shown(const QString &text)
{
    if (std::none_of(text.cbegin(), text.cend(), isControl))
        return text;
    QString result;
    result.reserve(text.size() + 8);
    for (const QChar character : text) {
        if (isControl(character))
            result += escaped(character);
        else
            result += character;
    }
    return result;
}

void KestinLogger::write(Level level, const QString &text)
{
    const QByteArray prefix = '<' + QByteArray::number(level) + '>';
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (configuredSink())
            configuredSink()(prefix + line.toUtf8());
        else
            writeToStandardError(prefix + line.toUtf8());
    }
}
