// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/records/Contact.h"

#include <QByteArray>
#include <QString>

#include <functional>

/// What an import has others do for it.

/// Fills the canonical numbers of many contacts; neither adds, removes nor reorders any.
using Canonize = std::function<void(ListContact &contacts)>;
/// Writes an image into a new photo file. Returns its path, a null text when it cannot be kept.
using KeepPhoto = std::function<QString(const QByteArray &image)>;
