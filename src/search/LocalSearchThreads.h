// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "src/search/SearchThread.h"

/// Finds the contacts of the phone whose latin name begins with the text. Hands over one packet, be it empty.
class LocalSearchByNameThread : public SearchThread
{
    Q_OBJECT

public:
    using SearchThread::SearchThread;

protected:
    void run() override;
};

/// Finds the contacts of the phone with this number, taken as it is. Hands over one packet, or none.
class LocalSearchByPhoneNumberThread : public SearchThread
{
    Q_OBJECT

public:
    using SearchThread::SearchThread;

protected:
    void run() override;
};
