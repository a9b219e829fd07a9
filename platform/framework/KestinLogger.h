// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <concepts>
#include <functional>

/// The platform log on standard error: a line for each message, prefixed with the level as the system journal reads it
/// ("<3>" to "<7>"). Any thread may use it.
///
/// A message is given as its pattern and the arguments for %1, %2, …. Nothing is formatted unless its level is on.
/// Control characters in an argument are shown escaped, so no input can forge a line. A line feed in the pattern itself
/// begins a second line of the same level.
class KestinLogger
{
public:
    enum Level { Error = 3, Warning = 4, Info = 6, Debug = 7 };

    /// Whether messages of this level are written. The limit comes from the environment variable KESTIN_LOG_LEVEL. It
    /// is 4 when the variable is not set or holds no number.
    static bool isOn(Level level);
    static void setLevel(int level);

    /// Gives every line (prefix included, line feed not) to `sink` instead of standard error. An empty sink restores
    /// standard error. Not to be called while other threads log.
    using Sink = std::function<void(const QByteArray &line)>;
    static void setSink(Sink sink);

    template <typename... Arguments>
    static void error(const char *pattern, const Arguments &...arguments)
    {
        log(Error, pattern, arguments...);
    }
    template <typename... Arguments>
    static void warning(const char *pattern, const Arguments &...arguments)
    {
        log(Warning, pattern, arguments...);
    }
    template <typename... Arguments>
    static void info(const char *pattern, const Arguments &...arguments)
    {
        log(Info, pattern, arguments...);
    }
    template <typename... Arguments>
    static void debug(const char *pattern, const Arguments &...arguments)
    {
        log(Debug, pattern, arguments...);
    }

    template <typename... Arguments>
    static void log(Level level, const char *pattern, const Arguments &...arguments)
    {
        if (!isOn(level))
            return;
        if constexpr (sizeof...(arguments) == 0)
            write(level, QString::fromUtf8(pattern));
        else
            write(level, QString::fromUtf8(pattern).arg(shown(arguments)...));
    }

    /// The text as it stands in the log: on a single line, control characters escaped.
    static QString shown(const QString &text);

private:
    static QString shown(const char *text) { return shown(QString::fromUtf8(text)); }
    static QString shown(const std::integral auto &number) { return QString::number(number); }
    static void write(Level level, const QString &text);
};
