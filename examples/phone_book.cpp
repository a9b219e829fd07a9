// SPDX-License-Identifier: Apache-2.0
// Stores a contact, learns its id from an event, finds it by number and by name, and deletes it: a client of the
// directory, with Qt and the records of the platform. The bus is that of KESTIN_BUS.
#include "platform/records/Contact.h"
#include "platform/records/EventArgument.h"
#include "platform/records/KestinBus.h"
#include "platform/records/PlatformEvents.h"

#include <QCoreApplication>
#include <QDBusReply>
#include <QTextStream>
#include <QTimer>

using namespace Qt::StringLiterals;

[[noreturn]] void fail(const QString &reason)
{
    QTextStream(stderr) << reason << Qt::endl;
    std::exit(EXIT_FAILURE);
}

/// The result of a method of the directory.
template <typename Result>
Result call(const QString &method, const QVariantList &arguments)
{
    const QDBusMessage message = KestinBus::methodCall(ModuleName::directory, method, arguments);
    const QDBusReply<Result> reply = KestinBus::connect().call(message);
    return reply.isValid() ? reply.value() : (fail(method + u": "_s + reply.error().message()), Result());
}

class PhoneBook : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void take(const QString &event, const ListEventArgument &arguments)
    {
        if (arguments.value(0).value != me) // another client's doing
            return;
        if (event == EventName::contactsCreated) {
            stored = qdbus_cast<ListContact>(arguments.value(1).value).value(0);
            out << "stored as " << stored.contactId << Qt::endl;
            for (const Contact &found : call<ListContact>(u"getLocalContacts"_s, {stored.officePhoneCan}))
                out << stored.officePhoneCan << " is " << found.firstName << ' ' << found.name << Qt::endl;
            call<int>(u"startSearchContactByName"_s, {me, u"kest"_s, 10, true});
        } else if (event == EventName::searchCompletedByName) {
            out << "kest finds " << arguments.value(1).value.toInt() << " of them";
            for (const ContactSummary &found : call<ListContactSummary>(u"getSearchResults"_s, {me, 0, 10}))
                out << ' ' << found.firstName << ' ' << found.name;
            out << "\ndeleted with " << call<int>(u"deleteLocalContact"_s, {me, stored.contactId}) << Qt::endl;
            QCoreApplication::quit();
        }
    }

public:
    const QString me = u"example-%1"_s.arg(QCoreApplication::applicationPid()); // of all clients this one
    Contact stored;
    QTextStream out{stdout};
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    registerDBusContact();
    registerDBusContactSummary();
    registerDBusEventArgument();
    PhoneBook book;
    KestinBus::connect().connect(QString(), KestinBus::objectPath(ModuleName::directory),
                                 QLatin1String(KestinBus::eventInterface), QLatin1String(KestinBus::eventSignal), &book,
                                 SLOT(take(QString, ListEventArgument)));
    Contact contact;
    contact.name = u"Kestrel"_s, contact.firstName = u"Ada"_s, contact.officePhone = u"+33 1 99 00 12 34"_s;
    if (const int code = call<int>(u"createLocalContact"_s, {book.me, QVariant::fromValue(contact)}))
        fail(u"createLocalContact answers %1"_s.arg(code)); // 3: there is no room; all codes are in docs/bus.md
    QTimer::singleShot(30000, &book, [] { fail(u"an event did not come"_s); });
    return QCoreApplication::exec();
}

#include "phone_book.moc"
