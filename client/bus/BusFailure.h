// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "client/bus/CommandFailure.h"

#include <QDBusMessage>

/// A call that was answered by an error, or not at all, in words for the user.
class BusFailure : public CommandFailure
{
public:
    /// `module` is who was called, `reply` the error that came instead of an answer.
    BusFailure(const QString &module, const QDBusMessage &reply);

    /// The answer would be larger than what the bus carries.
    bool isTooLarge() const { return m_tooLarge; }

private:
    bool m_tooLarge;
};
