// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/PresentationAdaptor.h"

#include "peers/presentation/Presentation.h"

PresentationAdaptor::PresentationAdaptor(Presentation &module)
    : QDBusAbstractAdaptor(&module)
    , m_presentation(module)
{
}

void PresentationAdaptor::showPopup(const QString &text, int, int duration, const QStringList &, const QString &,
                                    const QStringList &arguments, const QMap<QString, QString> &)
{
    m_presentation.takePopup(text, duration, arguments);
}

#include "moc_PresentationAdaptor.cpp"
