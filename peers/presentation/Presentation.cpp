// SPDX-License-Identifier: Apache-2.0
#include "peers/presentation/Presentation.h"

#include "peers/presentation/ContactPhoto.h"
#include "peers/presentation/Screen.h"
#include "platform/framework/KestinLogger.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace {

/// Each argument in its place, and nothing in what an argument holds.
QString filledIn(const QString &text, const QStringList &arguments)
{
    static const QRegularExpression place(QStringLiteral("%([1-9])"));
    QString result;
    qsizetype done = 0;
    for (auto match = place.globalMatch(text); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const int number = found.capturedView(1).toInt();
        result += QStringView(text).mid(done, found.capturedStart() - done);
        result += number <= arguments.size() ? arguments.at(number - 1) : found.captured();
        done = found.capturedEnd();
    }
    return result += QStringView(text).mid(done);
}

struct Subscription
{
    QLatin1String event;
    const char *slot;
};

const Subscription subscriptions[]{
    {EventName::searchResults, "showResults(KestinEvent)"},
    {EventName::searchCompletedByName, "completeByName(KestinEvent)"},
    {EventName::searchCompletedByPhoneNumber, "completeByNumber(KestinEvent)"},
    {EventName::contactsCreated, "takeCreation(KestinEvent)"},
    {EventName::contactsUpdated, "takeUpdate(KestinEvent)"},
    {EventName::contactsDeleted, "takeDeletion(KestinEvent)"},
    {EventName::previewCreated, "takePreviewChange(KestinEvent)"},
    {EventName::previewDeleted, "takePreviewChange(KestinEvent)"},
    {EventName::contentChanged, "takeAllAnew(KestinEvent)"},
    {EventName::userPhotoChanged, "takeUserPhoto(KestinEvent)"},
    {EventName::incomingCall, "ring(KestinEvent)"},
    {EventName::callEnded, "endCall(KestinEvent)"},
};

} // namespace

Presentation::Presentation(Screen &screen)
    : KestinModule(ModuleName::presentation)
    , m_screen(screen)
    , m_calls(*this)
    , m_search(m_calls)
    , m_contacts(m_calls, m_search)
    , m_card(m_calls, m_search)
    , m_incomingCall(m_calls)
    , m_previewKeys(m_calls)
{
    connectParts();
}

void Presentation::connectParts()
{
    connect(&m_card, &ContactCard::callRequested, this, [this](const QString &number) {
        notifyEvent(KestinEvent(EventName::callRequested, {{ArgumentName::phoneNumber, number}}));
    });
    connect(&m_card, &ContactCard::missing, this, [this] { m_popups.add(tr("This contact is no longer there.")); });
    connect(&m_card, &ContactCard::unreachable, this, [this] { m_popups.add(tr("The directory does not answer.")); });
    connect(&m_card, &ContactCard::refused, this,
            [this] { m_popups.add(tr("The preview keys cannot be changed now.")); });
    connect(&m_contacts, &ContactListModel::searchTextChanged, &m_card, &ContactCard::close); // also one on its way
    connect(&m_incomingCall, &IncomingCall::searching, &m_search, &DirectorySearch::setHeld);
    connect(&m_screen, &Screen::shown, this, [this] {
        m_isLoaded = true;
        notifyLoaded();
    });
}

void Presentation::notifyLoaded()
{
    notifyEvent(KestinEvent(EventName::presentationLoaded, {}));
}

bool Presentation::init()
{
    registerDBusContact();
    registerDBusContactSummary();
    for (const Subscription &subscription : subscriptions) {
        if (!subscribeEvent(subscription.event, this, subscription.slot)) {
            KestinLogger::error("The event %1 cannot be subscribed", subscription.event);
            return false;
        }
    }
    watchDirectory();
    return true;
}

void Presentation::watchDirectory()
{
    m_directory = watchModule(ModuleName::directory);
    connect(m_directory.get(), &ModuleWatch::left, &m_search, &DirectorySearch::fail);
    connect(m_directory.get(), &ModuleWatch::came, this, [this] {
        takeAllAnew();
        m_incomingCall.lookUpAgain();
        if (m_isLoaded) // it was not there to hear of it
            notifyLoaded();
    });
}

bool Presentation::run()
{
    if (!m_screen.open(*this))
        return false;
    m_contacts.setSearchText({});
    m_previewKeys.refresh();
    return true;
}

void Presentation::stop()
{
    m_screen.close();
}

void Presentation::takePopup(const QString &text, int duration, const QStringList &arguments)
{
    // The texts of the directory have translations.
    const QString told = QCoreApplication::translate("Popup", text.left(PopupQueue::longest).toUtf8().constData());
    QStringList shortened;
    for (const QString &argument : arguments)
        shortened.append(argument.left(PopupQueue::longest));
    m_popups.add(filledIn(told, shortened), duration);
}

bool Presentation::isIdle() const
{
    return m_calls.underWay() == 0 && !m_contacts.isBusy() && !m_previewKeys.isBusy();
}

void Presentation::showResults(const KestinEvent &event)
{
    m_search.takeResults(event);
}

void Presentation::completeByName(const KestinEvent &event)
{
    if (!m_search.takeCompletion(event))
        m_incomingCall.takeOtherCompletion();
}

void Presentation::completeByNumber(const KestinEvent &event)
{
    if (!m_incomingCall.takeCompletion(event)) {
        m_incomingCall.takeOtherCompletion();
        m_search.takeOtherCompletion();
    }
}

void Presentation::takeCreation(const KestinEvent &)
{
    m_incomingCall.lookUpAgain();
    m_contacts.refresh();
    m_previewKeys.refresh();
}

void Presentation::takeUpdate(const KestinEvent &event)
{
    const ListContact contacts = event.argument<ListContact>(ArgumentName::contacts);
    QStringList ids;
    for (const Contact &contact : contacts)
        ids.append(contact.contactId);
    m_contacts.forgetDetails(ids);
    m_card.takeUpdate(contacts);
    m_contacts.refresh();
    m_previewKeys.refresh();
}

void Presentation::takeDeletion(const KestinEvent &event)
{
    const QStringList ids = event.argument<QStringList>(ArgumentName::contactIds);
    m_card.takeDeletion(ids);
    m_contacts.forgetDetails(ids); // an id may come again
    m_contacts.refresh();
    m_previewKeys.refresh();
}

void Presentation::takePreviewChange(const KestinEvent &)
{
    m_card.reload();
    m_previewKeys.refresh();
}

void Presentation::takeAllAnew(const KestinEvent &)
{
    m_contacts.forgetAllDetails();
    m_contacts.refresh();
    m_previewKeys.refresh();
    m_card.reload();
}

void Presentation::takeUserPhoto(const KestinEvent &event)
{
    m_userPhoto = ContactPhoto::imageUrl(event.argument<QString>(ArgumentName::fileName));
    Q_EMIT userPhotoChanged();
}

void Presentation::ring(const KestinEvent &event)
{
    m_incomingCall.ring(event.argument<QString>(ArgumentName::phoneNumber));
}

void Presentation::endCall(const KestinEvent &)
{
    m_incomingCall.dismiss();
}

#include "moc_Presentation.cpp"
