// SPDX-License-Identifier: Apache-2.0
#include "client/text/Terminal.h"

#include <QtGlobal>

#include <sys/ioctl.h>
#include <unistd.h>

int Terminal::outputWidth()
{
    const int wanted = qEnvironmentVariableIntValue("COLUMNS"); // 0 when it is not set
    if (wanted > 0)
        return wanted;
    return outputSize().columns;
}

Terminal::Size Terminal::outputSize()
{
    winsize size{};
    if (!isatty(STDOUT_FILENO) || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0)
        return {};
    return {size.ws_col, size.ws_row};
}

bool Terminal::errorIsTerminal()
{
    return isatty(STDERR_FILENO);
}
