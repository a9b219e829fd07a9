// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

/// What a server's certificate says of itself.
namespace ServerCertificate {
/// Whom it names, who has signed it, and the last day on which it is good, for people; empty when the bytes (DER) are
/// no certificate.
QString textOf(const QByteArray &der);
} // namespace ServerCertificate
