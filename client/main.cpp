// SPDX-License-Identifier: Apache-2.0
#include "client/commands/Dispatcher.h"

#include <QCoreApplication>

#include <clocale>
#include <cstdlib>
#include <cstring>

#include <langinfo.h>

namespace {

/// Names are UTF-8 whatever the locale, and the width of their characters is the locale's business. Qt would switch
/// by itself, with a warning.
void useUtf8Locale()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        setenv("LC_ALL", "C.UTF-8", 1);
}

} // namespace

int main(int argc, char *argv[])
{
    useUtf8Locale();
    const QCoreApplication application(argc, argv);
    return Dispatcher().run(QCoreApplication::arguments().mid(1));
}
