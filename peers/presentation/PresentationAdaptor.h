// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusAbstractAdaptor>
#include <QMap>
#include <QStringList>

class Presentation;

/// The bus methods of the module "Presentation".
class PresentationAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.norlan.Kestin.KestinInterface")

public:
    /// A child of the module.
    explicit PresentationAdaptor(Presentation &module);

public Q_SLOTS:
    void showPopup(const QString &text, int kind, int duration, const QStringList &buttons, const QString &icon,
                   const QStringList &arguments, const QMap<QString, QString> &options);

private:
    Presentation &m_presentation;
};
