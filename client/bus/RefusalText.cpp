// SPDX-License-Identifier: Apache-2.0
#include "client/bus/RefusalText.h"

#include "platform/records/DirectoryCodes.h"

namespace {

QString readOnlyText()
{
    return QStringLiteral("the directory is read-only while it is being synchronised");
}

QString unknownText(const QString &id)
{
    return QStringLiteral("no contact has the id %1").arg(id);
}

QString databaseText(int code)
{
    return QStringLiteral("the directory could not write its database (code %1)").arg(code);
}

QString failedWriteText(int code, const Contact &contact)
{
    if (code == ResultCode::anonymous && contact.isAnonymous())
        return QStringLiteral("a contact whose number is \"anonymous\" is not accepted");
    return databaseText(code);
}

QString previewText(int code, const QString &id, const QString &nothingToDoText)
{
    switch (code) {
    case ResultCode::notFound:
        return unknownText(id);
    case ResultCode::wrongType:
        return QStringLiteral("%1 is a manager or assistant, who stays in the preview list").arg(id);
    case ResultCode::nothingToDo:
        return nothingToDoText.arg(id);
    case ResultCode::readOnly:
        return readOnlyText();
    default:
        return databaseText(code);
    }
}

} // namespace

bool RefusalText::isFinal(int createCode)
{
    return createCode == ResultCode::capacityReached || createCode == ResultCode::readOnly;
}

QString RefusalText::ofFullDirectory()
{
    return QStringLiteral("the directory is full: remove contacts or raise the setting DirMaxContact");
}

QString RefusalText::ofCreate(int code, const Contact &contact)
{
    switch (code) {
    case ResultCode::capacityReached:
        return ofFullDirectory();
    case ResultCode::readOnly:
        return readOnlyText();
    default:
        return failedWriteText(code, contact);
    }
}

QString RefusalText::ofModify(int code, const Contact &contact)
{
    switch (code) {
    case ResultCode::wrongType:
        return QStringLiteral("%1 was not made on this phone and cannot be changed here").arg(contact.contactId);
    case ResultCode::noSuchContact:
        return unknownText(contact.contactId);
    case ResultCode::readOnly:
        return readOnlyText();
    default:
        return failedWriteText(code, contact);
    }
}

QString RefusalText::ofRemove(int code, const QString &id)
{
    switch (code) {
    case ResultCode::wrongType:
        return QStringLiteral("%1 was not made on this phone and cannot be removed here").arg(id);
    case ResultCode::noSuchContact:
        return unknownText(id);
    case ResultCode::readOnly:
        return readOnlyText();
    default:
        return databaseText(code);
    }
}

QString RefusalText::ofAddToPreview(int code, const QString &id)
{
    return previewText(code, id, QStringLiteral("%1 is in the preview list already"));
}

QString RefusalText::ofRemoveFromPreview(int code, const QString &id)
{
    return previewText(code, id, QStringLiteral("%1 is not in the preview list"));
}
