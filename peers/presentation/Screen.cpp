// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/Screen.h"

#include "peers/presentation/ContactPhoto.h"
#include "peers/presentation/Presentation.h"

#include <QGuiApplication>
#include <QPalette>
#include <QQuickWindow>
#include <QTranslator>

void qml_register_types_Kestin_Presentation(); // made from the headers

namespace {

QVariant shared(QObject &object)
{
    QJSEngine::setObjectOwnership(&object, QJSEngine::CppOwnership);
    return QVariant::fromValue(&object);
}

} // namespace

Screen::Screen(const Look &look)
    : m_look(look)
{
}

Screen::~Screen() = default;

void Screen::setLanguage(const QLocale &locale)
{
    const QStringList languages = locale.uiLanguages();
    for (const QString &language : languages) {
        if (QLocale(language).language() == QLocale::English) // that of the sources
            break;
        auto *translator = new QTranslator(QGuiApplication::instance());
        if (translator->load(QLocale(language), QStringLiteral(":/i18n/presentation"), QStringLiteral("_"))) {
            QGuiApplication::installTranslator(translator);
            break;
        }
    }
    QGuiApplication::setLayoutDirection(locale.textDirection());
}

bool Screen::open(Presentation &phone)
{
    const bool isDark = m_look.isDark.value_or(QGuiApplication::palette().window().color().lightness() < 128);
    qml_register_types_Kestin_Presentation();
    m_engine = std::make_unique<QQmlApplicationEngine>();
    m_engine->addImageProvider(QLatin1String(ContactPhoto::provider), new ContactPhoto);
    m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    m_engine->setInitialProperties({{QStringLiteral("contacts"), shared(phone.contacts())},
                                    {QStringLiteral("card"), shared(phone.card())},
                                    {QStringLiteral("incomingCall"), shared(phone.incomingCall())},
                                    {QStringLiteral("popups"), shared(phone.popups())},
                                    {QStringLiteral("previewKeys"), shared(phone.previewKeys())},
                                    {QStringLiteral("phone"), shared(phone)},
                                    {QStringLiteral("isDark"), isDark},
                                    {QStringLiteral("width"), m_look.size.width()},
                                    {QStringLiteral("height"), m_look.size.height()}});
    m_engine->load(QUrl(QStringLiteral("qrc:/qt/qml/Kestin/Presentation/screen/Main.qml")));
    if (!window())
        return false;
    connect(window(), &QQuickWindow::frameSwapped, this, &Screen::shown, Qt::SingleShotConnection);
    if (m_look.isFullScreen)
        window()->showFullScreen();
    return true;
}

void Screen::close()
{
    m_engine.reset();
}

QQuickWindow *Screen::window() const
{
    return m_engine ? qobject_cast<QQuickWindow *>(m_engine->rootObjects().value(0)) : nullptr;
}

#include "moc_Screen.cpp"
