// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/Playback.h"
#include "peers/presentation/Presentation.h"
#include "peers/presentation/PresentationAdaptor.h"
#include "peers/presentation/Screen.h"
#include "platform/framework/ModuleLife.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <iterator>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr char description[] =
    R"(The phone book of a Kestin phone in a window: module "Presentation" on the
message bus.

The list with a search field over the phone and the company, a contact with what
one can call, the contacts of the preview list as keys, who is calling
(kestin-dir ring NUMBER), and what the phone has to tell. It keeps nothing: all
comes from the directory (kestin-directory).

Keys: type to search; Down into the list, Return opens a contact, Escape goes
back; Tab goes from part to part.

Method of com.norlan.Kestin.KestinInterface at /com/norlan/Kestin/Presentation:
  showPopup(text s, kind i, duration i, buttons as, icon s, arguments as,
            options a{ss})  shows the text, for so many seconds
Event it raises: presentationLoaded, when the first frame is on the screen.

With --play it does what the lines of its standard input say, and answers each
with "done" or "failed: " and why:
  type TEXT    into what has the focus
  key NAME     Return, Down, Escape, Tab, Ctrl+A ...
  print        tells what is shown, a line each, as a screen reader would
  wait TEXT    until one of these lines contains the text, 20 s at most
  frame        until the next frame is on the screen
  settle       until nothing is asked, searched or loaded, 20 s at most
  save FILE    writes a picture of the window

Environment:
  KESTIN_BUS        system (default), session, or a bus address
  KESTIN_LOG_LEVEL  3 errors, 4 warnings (default), 6 information, 7 everything
  QT_QPA_PLATFORM   where the window is: "offscreen" for nowhere, with
                    QT_QUICK_BACKEND=software where there is no graphics driver

Example:
  KESTIN_BUS=session kestin-presentation --language de --dark

Exit code: 0 after SIGTERM, SIGINT, or when the window is closed, 1 when it
cannot start or the bus is gone.)";

constexpr const char *displays[] = {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"};

struct Options
{
    Screen::Look look;
    QLocale locale = QLocale::system();
    bool isPlayed = false;
};

/// Nothing when they make no sense, which was told.
std::optional<Options> optionsOf(int argc, char **argv)
{
    const QCoreApplication application(argc, argv); // which needs no display
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(description));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({{QStringLiteral("language"),
                        QStringLiteral("Language of the texts, such as de or fr; that of the environment by default."),
                        QStringLiteral("language")},
                       {QStringLiteral("light"), QStringLiteral("Light colours.")},
                       {QStringLiteral("dark"), QStringLiteral("Dark colours; by default as those of the desk.")},
                       {QStringLiteral("size"), QStringLiteral("Size of the window in pixels, 480x272 or more."),
                        QStringLiteral("WxH"), QStringLiteral("480x272")},
                       {QStringLiteral("full-screen"), QStringLiteral("Takes the whole screen.")},
                       {QStringLiteral("play"), QStringLiteral("Takes what to do from standard input.")}});
    parser.process(application);

    const auto refuse = [](const QString &reason) {
        std::fprintf(stderr, "kestin-presentation: %s; see --help\n", qUtf8Printable(reason));
        return std::nullopt;
    };
    Options options;
    if (!parser.positionalArguments().isEmpty())
        return refuse(QStringLiteral("there are no arguments but the options"));
    if (parser.isSet(QStringLiteral("dark")) && parser.isSet(QStringLiteral("light")))
        return refuse(QStringLiteral("--dark and --light exclude each other"));
    if (parser.isSet(QStringLiteral("dark")) || parser.isSet(QStringLiteral("light")))
        options.look.isDark = parser.isSet(QStringLiteral("dark"));
    static const QRegularExpression size(QStringLiteral("\\A([0-9]{3,4})x([0-9]{3,4})\\z"));
    const QRegularExpressionMatch match = size.match(parser.value(QStringLiteral("size")));
    options.look.size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    if (options.look.size.width() < 480 || options.look.size.height() < 272)
        return refuse(QStringLiteral("--size takes 480x272 or more, not %1").arg(parser.value(QStringLiteral("size"))));
    options.look.isFullScreen = parser.isSet(QStringLiteral("full-screen"));
    if (parser.isSet(QStringLiteral("language"))) {
        options.locale = QLocale(parser.value(QStringLiteral("language")));
        if (options.locale.language() == QLocale::C)
            return refuse(QStringLiteral("no language is called %1").arg(parser.value(QStringLiteral("language"))));
    }
    options.isPlayed = parser.isSet(QStringLiteral("play"));
    return options;
}

/// Without, Qt ends the process.
bool hasDisplay()
{
    return std::any_of(std::begin(displays), std::end(displays),
                       [](const char *name) { return !qEnvironmentVariableIsEmpty(name); });
}

} // namespace

int main(int argc, char **argv)
{
    ProcessSignals::block();                                 // the libraries of a window start threads
    const bool hasInput = fcntl(STDIN_FILENO, F_GETFD) >= 0; // before another file gets its number
    QCoreApplication::setApplicationName(QStringLiteral("kestin-presentation"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KESTIN_VERSION));
    const std::optional<Options> options = optionsOf(argc, argv);
    if (!options)
        return EXIT_FAILURE;
    if (options->isPlayed && !hasInput) {
        std::fputs("kestin-presentation: --play wants a standard input\n", stderr);
        return EXIT_FAILURE;
    }
    if (!hasDisplay()) {
        std::fprintf(stderr, "kestin-presentation: there is no display: DISPLAY, WAYLAND_DISPLAY and QT_QPA_PLATFORM "
                             "are not set\n");
        return EXIT_FAILURE;
    }
    const QGuiApplication application(argc, argv);

    ModuleLife life(&QGuiApplication::exec);
    Screen::setLanguage(options->locale);
    Screen screen(options->look);
    Presentation module(screen);
    std::optional<Playback> playback;
    if (options->isPlayed)
        QObject::connect(&screen, &Screen::shown, &screen, [&] { playback.emplace(module, screen); });
    return life.exec<PresentationAdaptor>(module);
}
