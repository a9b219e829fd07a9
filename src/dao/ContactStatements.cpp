// SPDX-License-Identifier: Apache-2.0
#include "src/dao/ContactStatements.h"

#include "src/dao/ContactRow.h"

using ContactRow::exportText;
using ContactRow::insertText;
using ContactRow::namesText;
using ContactRow::selectText;
using ContactRow::summaryText;
using ContactRow::updateText;

ContactStatements::ContactStatements(Connection &connection)
    : remove(connection, QStringLiteral("DELETE FROM CONTACT WHERE contactId=:contactId"))
    , removeCached(connection, QStringLiteral("DELETE FROM CONTACT WHERE contactId=:contactId AND type='6'"))
    , oldestCached(connection, QStringLiteral("SELECT contactId FROM CONTACT WHERE type = '6' "
                                              "ORDER BY LASTMODIFICATIONDATE LIMIT 1"))
    , cachedByNumber(connection, QStringLiteral("SELECT contactId FROM CONTACT WHERE type = '6'  AND officePhoneCan IN "
                                                "(:officePhoneCan, :faxCan, :personalHomeCan, :personalMobileCan, "
                                                ":personalFaxCan)"))
    , updateId(connection, QStringLiteral("UPDATE CONTACT SET contactId=:contactId WHERE contactId='newContact'"))
    , updatePuid(connection, QStringLiteral("UPDATE CONTACT SET puid=:puid WHERE contactId=:contactId"))
    , updatePhoto(connection, QStringLiteral("UPDATE CONTACT SET photo=:photo WHERE contactId=:contactId"))
    , insert(connection, insertText)
    , update(connection, updateText + QLatin1String(" WHERE contactId=:contactId"))
    , updateFromImport(connection, updateText + QLatin1String(", puid = :puid WHERE contactId=:contactId"))
    , fillLatinNames(connection,
                     QStringLiteral("UPDATE CONTACT SET latinFirstName=latin(firstName), latinName=latin(name) "
                                    "WHERE latinName='' AND (ifnull(name,'')!='' OR "
                                    "ifnull(latinFirstName,'')!=latin(firstName))"))
    , updatePreview(connection,
                    QStringLiteral("UPDATE CONTACT SET isPreviewed=:isPreviewed WHERE contactId=:contactId"))
    , count(connection, QStringLiteral("SELECT COUNT(*) FROM CONTACT"))
    , countDM(connection, QStringLiteral("SELECT COUNT(*) FROM CONTACT where (type='3' or type='5')"))
    , countLocal(connection, QStringLiteral("SELECT COUNT(*) FROM CONTACT where type='0'"))
    , countCached(connection, QStringLiteral("SELECT COUNT(*) FROM CONTACT where type='6'"))
    , countPhoto(connection, QStringLiteral("SELECT COUNT(*) FROM CONTACT WHERE photo=:photo"))
    , puids(connection, QStringLiteral("SELECT contactId,puid FROM CONTACT where type='0'"))
    , byId(connection, selectText + QLatin1String(" WHERE contactId=:contactId"))
    , typeById(connection, QStringLiteral("SELECT type FROM CONTACT WHERE contactId=:contactId LIMIT 1"))
    , all(connection, selectText + QLatin1String(" ORDER BY contactId"))
    , page(connection, selectText + QLatin1String(" ORDER BY contactId limit :startInd , :length"))
    , pageFrom(connection,
               selectText + QLatin1String(" WHERE contactId>=:contactId ORDER BY contactId limit :startInd , :length"))
    , countId(connection, QStringLiteral("SELECT COUNT(*) FROM CONTACT WHERE contactId=:contactId"))
    , dataVersion(connection, QStringLiteral("PRAGMA data_version"))
    , byNumber(connection, selectText + QLatin1String(" WHERE officePhoneCan=:officePhoneCan OR faxCan=:faxCan OR "
                                                      "personalHomeCan=:personalHomeCan OR "
                                                      "personalMobileCan=:personalMobileCan OR "
                                                      "personalFaxCan=:personalFaxCan"))
    , byIMAddress(connection, selectText + QLatin1String(" WHERE upper (collaborationId) = upper (:collaborationId) "
                                                         "AND type !='6' "))
    , byEmail(connection, selectText + QLatin1String(" WHERE upper (email) = upper (:email) AND type != '6' "))
    , byType(connection, selectText + QLatin1String(" WHERE type=:type"))
    , byName(connection, selectText + QLatin1String(" where name like :name"))
    , byLatinName(connection, summaryText.arg(ContactRow::latinNameText))
    , byLatinPrefix(connection, summaryText.arg(ContactRow::latinNameText) + QLatin1String(" WHERE ") +
                                    QLatin1String(ContactRow::latinPrefixCondition))
    , withoutLatinName(connection, namesText.arg(ContactRow::noLatinNameText))
    , previewPage(connection, selectText + QLatin1String(" WHERE isPreviewed='true' ORDER BY contactId "
                                                         "limit :startInd , :length"))
    , fullExport(connection, exportText)
    , mappingExport(connection, QStringLiteral("SELECT contactId, puid FROM CONTACT where type='0'"))
    , changedSince(connection,
                   QStringLiteral("SELECT contactId from contact where lastModificationDate > :lastExportDate "
                                  "limit 1"))
    , photos(connection, QStringLiteral("SELECT DISTINCT photo FROM CONTACT WHERE photo>''"))
    , unresizedPhotos(connection, selectText + QLatin1String(" WHERE photo>'' AND photo NOT GLOB 'http*' AND "
                                                             "substr(photo, -length(:suffix))<>:suffix AND type<>'3' "
                                                             "ORDER BY +contactId")) // sorted, not scanned by its index
{
}
