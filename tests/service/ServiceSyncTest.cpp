// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PhoneUnderTest.h"

namespace {

constexpr int contactsInFile = 120;

/// So many new contacts with this mark, each with a photo of its own.
QByteArray fileOf(const QByteArray &mark)
{
    QByteArray xml = "<directory>";
    for (int i = 0; i < contactsInFile; ++i) {
        const QByteArray name = mark + QByteArray::number(i);
        xml += "<contact duid=\"\" puid=\"" + name + "\"><lastName>" + name + "</lastName><officePhone>" +
               QByteArray::number(100000 + i) + "</officePhone><company>" + mark + "</company><photo>" +
               QByteArray("photo " + name).toBase64() + "</photo></contact>";
    }
    return xml + "</directory>";
}

} // namespace

/// An import that is killed in the middle.
class ServiceSyncTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aKilledImportIsAllOrNothing()
    {
        phone.startPeers();
        phone.set("DirMaxContact", QString::number(contactsInFile));
        QVERIFY(phone.startDirectory());
        QString current;
        QSet<QString> ends; // how many were undone, how many done
        // Killed when so many photos have been written; behind the commit, when the old ones begin to go; at the end.
        constexpr int removing = -1;
        constexpr int finished = -2;
        for (const int when : {1, 60, finished, 10, contactsInFile, removing, 119, removing}) {
            const QString next = current == "a" ? "b" : "a";
            const qsizetype before = photos().size();
            qsizetype most = 0;
            phone.events.clear();
            phone.asyncCall("importFromXml", {write(next.toUtf8())});
            QVERIFY(QTest::qWaitFor(
                [&] {
                    const qsizetype count = photos().size();
                    most = qMax(most, count);
                    return (when > 0 && count >= before + when) || (when == removing && count < most) ||
                           phone.events.contains(EventName::importFinished);
                },
                Program::limitMs));
            phone.directory.kill();
            QVERIFY(phone.startDirectory());
            const QString found = markOfAll();
            QVERIFY2(found == current || found == next, qPrintable(found));
            ends.insert(found == next ? "done" : "undone");
            current = found;
        }
        QCOMPARE(ends.size(), 2);
        phone.events.clear();
        phone.asyncCall("importFromXml", {write("c")});
        QTRY_VERIFY_WITH_TIMEOUT(phone.events.contains(EventName::contentChanged), Program::limitMs);
        QCOMPARE(markOfAll(), "c");
        QCOMPARE(phone.events.filter(EventName::importFinished).size(), 1);
    }

private:
    QStringList photos() const
    {
        return QDir(phone.data.filePath("KestinDirectory/photos")).entryList({"photo_*"}, QDir::Files);
    }
    QString write(const QByteArray &mark) { return writeFile(phone.data.filePath("contacts.xml"), fileOf(mark)); }
    /// The mark of all contacts that are there; empty when there is none, and a report when they disagree.
    QString markOfAll()
    {
        const ListContact contacts = phone.contacts("getLocalContacts", {0, -1});
        const QString mark = contacts.value(0).misc.value("company");
        QSet<QString> named;
        for (const Contact &contact : contacts) {
            if (contact.misc.value("company") != mark || !contact.name.startsWith(mark) ||
                contact.officePhoneCan.isEmpty() || contentOf(contact.photo) != "photo " + contact.name.toUtf8())
                return "mixed: " + contact.name + ' ' + contact.photo;
            named.insert(contact.photo);
        }
        const qsizetype expected = mark.isEmpty() ? 0 : contactsInFile;
        if (contacts.size() != expected || named.size() != expected || photos().size() != expected)
            return QString("%1 contacts, %2 photos").arg(contacts.size()).arg(photos().size());
        return mark;
    }

    PhoneUnderTest phone;
};

QTEST_GUILESS_MAIN(ServiceSyncTest)
#include "ServiceSyncTest.moc"
