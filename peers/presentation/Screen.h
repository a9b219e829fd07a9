// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLocale>
#include <QObject>
#include <QQmlApplicationEngine>
#include <QSize>

#include <memory>
#include <optional>

class Presentation;
class QQuickWindow;

/// The window, and how it looks: language, direction and colours.
class Screen : public QObject
{
    Q_OBJECT

public:
    struct Look
    {
        std::optional<bool> isDark; ///< by default as the desk's colours are
        QSize size{480, 272};
        bool isFullScreen = false;
    };
    explicit Screen(const Look &look);
    ~Screen() override;

    /// Gives all texts of the process that have one in this language, and the direction in which it is written. Before
    /// the window is opened.
    static void setLanguage(const QLocale &locale);

    /// False, with the reason in the log, when the window cannot be made.
    bool open(Presentation &phone);
    void close();
    /// Null unless it is open.
    QQuickWindow *window() const;

Q_SIGNALS:
    /// The first frame is on the screen.
    void shown();

private:
    Look m_look;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
};
