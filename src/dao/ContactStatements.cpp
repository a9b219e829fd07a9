// SPDX-License-Identifier: Apache-2.0
#include "src/dao/ContactStatements.h"

#include "src/dao/ContactRow.h"

using ContactRow::exportText;
using ContactRow::insertText;
using ContactRow::selectText;
using ContactRow::updateText;

ContactStatements::ContactStatements(const QSqlDatabase &handle)
    : remove(handle, QStringLiteral("DELETE FROM CONTACT WHERE contactId=:contactId"))
    , removeCached(handle, QStringLiteral("DELETE FROM CONTACT WHERE contactId=:contactId AND type='6'"))
    , oldestCached(handle, QStringLiteral("SELECT contactId FROM CONTACT WHERE type = '6' "
                                          "ORDER BY LASTMODIFICATIONDATE LIMIT 1"))
    , cachedByNumber(handle, QStringLiteral("SELECT contactId FROM CONTACT WHERE type = '6'  AND officePhoneCan IN "
                                            "(:officePhoneCan, :faxCan, :personalHomeCan, :personalMobileCan, "
                                            ":personalFaxCan)"))
    , updateId(handle, QStringLiteral("UPDATE CONTACT SET contactId=:contactId WHERE contactId='newContact'"))
    , updatePuid(handle, QStringLiteral("UPDATE CONTACT SET puid=:puid WHERE contactId=:contactId"))
    , updatePhoto(handle, QStringLiteral("UPDATE CONTACT SET photo=:photo WHERE contactId=:contactId"))
    , insert(handle, insertText)
    , update(handle, updateText + QLatin1String(" WHERE contactId=:contactId"))
    , updateFromImport(handle, updateText + QLatin1String(", puid = :puid WHERE contactId=:contactId"))
    , updatePreview(handle, QStringLiteral("UPDATE CONTACT SET isPreviewed=:isPreviewed WHERE contactId=:contactId"))
    , count(handle, QStringLiteral("SELECT COUNT(*) FROM CONTACT"))
    , countDM(handle, QStringLiteral("SELECT COUNT(*) FROM CONTACT where (type='3' or type='5')"))
    , countLocal(handle, QStringLiteral("SELECT COUNT(*) FROM CONTACT where type='0'"))
    , countCached(handle, QStringLiteral("SELECT COUNT(*) FROM CONTACT where type='6'"))
    , countPhoto(handle, QStringLiteral("SELECT COUNT(*) FROM CONTACT WHERE photo=:photo"))
    , puids(handle, QStringLiteral("SELECT contactId,puid FROM CONTACT where type='0'"))
    , byId(handle, selectText + QLatin1String(" WHERE contactId=:contactId"))
    , all(handle, selectText + QLatin1String(" ORDER BY contactId"))
    , page(handle, selectText + QLatin1String(" ORDER BY contactId limit :startInd , :length"))
    , byNumber(handle, selectText + QLatin1String(" WHERE officePhoneCan=:officePhoneCan OR faxCan=:faxCan OR "
                                                  "personalHomeCan=:personalHomeCan OR "
                                                  "personalMobileCan=:personalMobileCan OR "
                                                  "personalFaxCan=:personalFaxCan"))
    , byIMAddress(handle, selectText + QLatin1String(" WHERE upper (collaborationId) = upper (:collaborationId) "
                                                     "AND type !='6' "))
    , byEmail(handle, selectText + QLatin1String(" WHERE upper (email) = upper (:email) AND type != '6' "))
    , byType(handle, selectText + QLatin1String(" WHERE type=:type"))
    , previewPage(handle, selectText + QLatin1String(" WHERE isPreviewed='true' ORDER BY contactId "
                                                     "limit :startInd , :length"))
    , fullExport(handle, exportText)
    , mappingExport(handle, QStringLiteral("SELECT contactId, puid FROM CONTACT where type='0'"))
    , changedSince(handle, QStringLiteral("SELECT contactId from contact where lastModificationDate > :lastExportDate "
                                          "limit 1"))
    , photos(handle, QStringLiteral("SELECT DISTINCT photo FROM CONTACT WHERE photo>''"))
    , unresizedPhotos(handle, selectText + QLatin1String(" WHERE photo>'' AND photo NOT GLOB 'http*' AND "
                                                         "substr(photo, -length(:suffix))<>:suffix AND type<>'3' "
                                                         "ORDER BY +contactId")) // sorted, not scanned by its index
{
}
