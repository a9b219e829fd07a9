// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Confirmation.h"

#include "client/bus/CommandFailure.h"
#include "client/text/Terminal.h"

#include <cstdio>

QCommandLineOption Confirmation::option()
{
    return {QStringLiteral("yes"), QStringLiteral("Do not ask (only a terminal is asked)")};
}

bool Confirmation::isWanted(const QCommandLineParser &arguments)
{
    return !arguments.isSet(QStringLiteral("yes")) && Terminal::canAsk();
}

void Confirmation::ask(const QString &question)
{
    std::fprintf(stderr, "%s [y/N] ", Printable::text(question).toUtf8().constData());
    constexpr int longest = 16;
    char answer[longest] = "";
    const bool isAnswered = std::fgets(answer, longest, stdin) != nullptr;
    if (!isAnswered)
        std::fputc('\n', stderr);
    if (answer[0] != 'y' && answer[0] != 'Y')
        throw CommandFailure(ExitCode::Refused, QStringLiteral("nothing is changed"));
}
