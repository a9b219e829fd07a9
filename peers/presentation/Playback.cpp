// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/Playback.h"

#include "peers/presentation/Presentation.h"
#include "peers/presentation/Screen.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include <unistd.h>

namespace {

/// What QML attaches to an item for assistive technology; null when that is nothing. Qt offers it to the platform only,
/// and where there is no display the platform does not ask.
const QObject *accessibleOf(const QQuickItem &item)
{
    const QObjectList &children = item.children();
    const auto attached = std::find_if(children.begin(), children.end(), [](const QObject *child) {
        return child->inherits("QQuickAccessibleAttached");
    });
    return attached != children.end() && !(*attached)->property("ignored").toBool() ? *attached : nullptr;
}

/// The names of this and of what it holds, as far as it is inside of the window.
void collect(const QQuickItem &item, QStringList &lines)
{
    if (!item.isVisible())
        return;
    const QRectF window(QPointF(), item.window()->size());
    const QObject *accessible = accessibleOf(item);
    const QString name = accessible ? accessible->property("name").toString().simplified() : QString();
    if (!name.isEmpty() && window.intersects(item.mapRectToScene(QRectF(QPointF(), item.size())))) {
        const QString typed = item.inherits("QQuickTextInput") ? item.property("text").toString() : QString();
        lines.append(typed.isEmpty() ? name : QStringLiteral("%1: %2").arg(name, typed));
    }
    QList<QQuickItem *> children = item.childItems();
    if (item.parentItem() &&
        item.parentItem()->inherits("QQuickListView")) // its rows come in the order of their making
        std::stable_sort(children.begin(), children.end(),
                         [](const QQuickItem *a, const QQuickItem *b) { return a->y() < b->y(); });
    for (const QQuickItem *child : std::as_const(children))
        collect(*child, lines);
}

bool isLoading(const QQuickItem &item)
{
    constexpr int loading = 2; // Image.Loading
    if (item.inherits("QQuickImage") && item.isVisible() && item.property("status").toInt() == loading)
        return true;
    const QList<QQuickItem *> children = item.childItems();
    return std::any_of(children.begin(), children.end(), [](const QQuickItem *child) { return isLoading(*child); });
}

} // namespace

Playback::Playback(Presentation &phone, Screen &screen)
    : m_phone(phone)
    , m_screen(screen)
{
    auto *notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        read();
        notifier->setEnabled(!m_isAtEnd);
        playNext();
    });
    connect(m_screen.window(), &QQuickWindow::frameSwapped, this, &Playback::look);
    constexpr int frameEveryMs = 20;
    m_frames.setInterval(frameEveryMs);
    connect(&m_frames, &QTimer::timeout, m_screen.window(), &QQuickWindow::update);
}

void Playback::read()
{
    std::array<char, 4096> buffer;
    const ssize_t length = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (length > 0)
        m_input.append(buffer.data(), length);
    else
        m_isAtEnd = length == 0 || errno != EINTR;
}

void Playback::playNext()
{
    if (m_isAtEnd && !m_input.isEmpty() && !m_input.endsWith('\n'))
        m_input.append('\n');
    while (!m_condition && m_input.contains('\n')) {
        const QString line = QString::fromUtf8(m_input.left(m_input.indexOf('\n'))).trimmed();
        m_input.remove(0, m_input.indexOf('\n') + 1);
        if (!line.isEmpty())
            play(line.section(QLatin1Char(' '), 0, 0), line.section(QLatin1Char(' '), 1).trimmed());
    }
    if (!m_condition && m_isAtEnd)
        QCoreApplication::quit();
}

void Playback::play(const QString &command, const QString &argument)
{
    if (command == QLatin1String("type")) {
        type(argument);
    } else if (command == QLatin1String("key")) {
        press(argument);
    } else if (command == QLatin1String("print")) {
        std::puts(lines().join(QLatin1Char('\n')).toUtf8().constData());
        answer();
    } else if (command == QLatin1String("wait")) {
        await([this, argument] { return lines().join(QLatin1Char('\n')).contains(argument); });
    } else if (command == QLatin1String("settle")) {
        await([this] { return isSettled(); }, 2); // between two calls there may be a frame
    } else if (command == QLatin1String("frame")) {
        await([] { return true; });
    } else if (command == QLatin1String("save")) {
        answer(m_screen.window()->grabWindow().save(argument)
                   ? QString()
                   : QStringLiteral("no picture can be written to \"%1\"").arg(argument));
    } else {
        answer(QStringLiteral("there is no \"%1\"").arg(command));
    }
}

void Playback::answer(const QString &problem)
{
    const QString text = problem.isEmpty() ? QStringLiteral("done") : QStringLiteral("failed: ") + problem;
    std::puts(text.toUtf8().constData());
    std::fflush(stdout);
}

void Playback::press(const QString &name)
{
    const QKeySequence sequence(name);
    const QKeyCombination keys = sequence.isEmpty() ? QKeyCombination() : sequence[0];
    if (keys.key() == Qt::Key_unknown || sequence.count() != 1) {
        answer(QStringLiteral("no key is called \"%1\"").arg(name));
        return;
    }
    for (const QEvent::Type kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(kind, keys.key(), keys.keyboardModifiers());
        QCoreApplication::sendEvent(m_screen.window(), &event);
    }
    answer();
}

void Playback::type(const QString &text)
{
    const QList<uint> characters = text.toUcs4();
    for (const char32_t character : characters) {
        for (const QEvent::Type kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(kind, int(QChar::toUpper(character)), Qt::NoModifier, QString::fromUcs4(&character, 1));
            QCoreApplication::sendEvent(m_screen.window(), &event);
        }
    }
    answer();
}

void Playback::await(const Condition &condition, int frames)
{
    m_condition = condition;
    m_framesLeft = m_framesWanted = frames;
    m_since.start();
    m_frames.start();
    m_screen.window()->update();
}

/// A frame is on the screen.
void Playback::look()
{
    if (!m_condition)
        return;
    m_framesLeft = m_condition() ? m_framesLeft - 1 : m_framesWanted;
    const bool holds = m_framesLeft == 0;
    if (!holds && !m_since.hasExpired(limitMs))
        return;
    m_frames.stop();
    m_condition = {};
    answer(holds ? QString() : QStringLiteral("not within %1 s").arg(limitMs / 1000));
    // Not from inside of the frame.
    QMetaObject::invokeMethod(this, &Playback::playNext, Qt::QueuedConnection);
}

QStringList Playback::lines() const
{
    QStringList lines;
    if (const QQuickWindow *window = m_screen.window())
        collect(*window->contentItem(), lines);
    return lines;
}

bool Playback::isSettled() const
{
    return m_phone.isIdle() && m_screen.window() && !isLoading(*m_screen.window()->contentItem());
}

#include "moc_Playback.cpp"
