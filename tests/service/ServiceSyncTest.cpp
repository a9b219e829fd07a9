// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PhoneUnderTest.h"

namespace {

constexpr int contactsInFile = 120;

/// So many new contacts with this mark; each with a photo of its own if they are contactsInFile.
QByteArray fileOf(const QByteArray &mark, int count)
{
    QByteArray xml = "<directory>";
    for (int i = 0; i < count; ++i) {
        const QByteArray name = mark + QByteArray::number(i);
        xml += "<contact duid=\"\" puid=\"" + name + "\"><lastName>" + name + "</lastName><officePhone>" +
               QByteArray::number(100000 + i) + "</officePhone><company>" + mark + "</company>" +
               (count == contactsInFile ? "<photo>" + QByteArray("photo " + name).toBase64() + "</photo>" : "") +
               "</contact>";
    }
    return xml + "</directory>";
}

} // namespace

/// Imports and exports that somebody or something gets in the way of.
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
            QCoreApplication::processEvents();
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
        QCoreApplication::processEvents(); // what the one that was killed has told
        phone.events.clear();
        phone.asyncCall("importFromXml", {write("c")});
        QTRY_VERIFY_WITH_TIMEOUT(phone.events.contains(EventName::contentChanged), Program::limitMs);
        QCOMPARE(markOfAll(), "c");
        QCOMPARE(phone.events.filter(EventName::importFinished).size(), 1);
    }

    void longWorkHoldsUpNoCaller()
    {
        phone.startPeers();
        constexpr int many = 3000;
        phone.set("DirMaxContact", "4000");
        QVERIFY(phone.startDirectory());
        phone.call("importFromXml", {write("", 0)}); // whatever was there
        QCOMPARE(phone.create(person("name=Before|officePhone=0033199007700")), 0);
        const Contact later = person("name=Later|officePhone=0033199007711");
        const auto known = [this] { return phone.contacts("getLocalContacts", {"+33199007700"}).size(); };
        const QDateTime now = QDateTime::currentDateTimeUtc();
        const QVariantList exported{phone.data.filePath("out.xml"), 0, true, "i", "d", now, QDateTime()};
        for (const auto &[method, arguments, before, after] :
             {std::tuple("importFromXml", QVariantList{write("a", many)}, 1, 0), {"exportToXml", exported, 0, 0}}) {
            phone.events.clear();
            const QDBusPendingCall work = phone.asyncCall(method, arguments);
            QDBusPendingCall write = phone.asyncCall("createLocalContact", {"r", QVariant::fromValue(later)});
            int answers = 0;
            bool isOver = false;
            for (; !work.isFinished(); ++answers) {
                const qsizetype found = known();
                isOver = isOver || found == after; // the answer comes behind the commit
                QCOMPARE(found, isOver ? after : before);
                QVERIFY(!write.isFinished() || work.isFinished());
                QCoreApplication::processEvents();
            }
            QVERIFY2(answers > 3, method);
            write.waitForFinished();
            QCOMPARE(QDBusReply<int>(write.reply()).value(), 0);
            QCOMPARE(known(), after);
        }
        QVERIFY(!contentOf(exported.first().toString()).contains("Before"));
        QCOMPARE(phone.contacts("getLocalContacts", {0, -1}).size(), many + 2);
        QCOMPARE(phone.contacts("getLocalContacts", {"+33199007711"}).size(), 2);
    }

private:
    QStringList photos() const
    {
        return QDir(phone.data.filePath("KestinDirectory/photos")).entryList({"photo_*"}, QDir::Files);
    }
    QString write(const QByteArray &mark, int count = contactsInFile)
    {
        return writeFile(phone.data.filePath("contacts.xml"), fileOf(mark, count));
    }
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
