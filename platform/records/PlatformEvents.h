// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>

/// The names of the platform's events. Their arguments, in their order, stand in docs/bus.md.
namespace EventName {

// Raised by the directory.
/// Contacts were stored.
inline constexpr QLatin1String contactsCreated("DIR_CONTACTS_CREATED");
/// Stored contacts, or only their photos, changed.
inline constexpr QLatin1String contactsUpdated("DIR_CONTACTS_UPDATED");
/// Stored contacts are gone.
inline constexpr QLatin1String contactsDeleted("DIR_CONTACTS_DELETED");
/// Contacts came into the preview list.
inline constexpr QLatin1String previewCreated("DIR_CONTACTSINPREVIEW_CREATED");
/// Contacts left the preview list.
inline constexpr QLatin1String previewDeleted("DIR_CONTACTSINPREVIEW_DELETED");
/// No room for another contact of the user.
inline constexpr QLatin1String databaseFull("DIR_CONTACT_DB_FULL");
/// Whoever shows contacts reads all again.
inline constexpr QLatin1String contentChanged("DIR_CONTENT_CHANGED");
/// A search found more.
inline constexpr QLatin1String searchResults("DIR_SEARCH_RESULTS");
/// The end of a search by name, with how many were found.
inline constexpr QLatin1String searchCompletedByName("DIR_SEARCH_COMPLETED_BY_NAME");
/// The end of a search by number, with who has it.
inline constexpr QLatin1String searchCompletedByPhoneNumber("DIR_SEARCH_COMPLETED_BY_PHONE_NUMBER");
/// The address that was asked for, or an empty text.
inline constexpr QLatin1String imAddressResult("DIR_IM_ADDRESS_RESULT");
/// The photo of the phone's own user.
inline constexpr QLatin1String userPhotoChanged("userPhotoChanged");
/// How an import of the synchronisation file ended.
inline constexpr QLatin1String importFinished("ImportFinishedEvt");
/// How an export of the synchronisation file ended.
inline constexpr QLatin1String exportFinished("ExportFinishedEvt");

// Raised by the web-service manager.
/// The whole contact that was asked for.
inline constexpr QLatin1String wsContactProfile("WS_DIRECTORY_GET_CONTACT_PROFILE");
/// The attributes by which can be searched.
inline constexpr QLatin1String wsAttributes("WS_DIRECTORY_GET_ATTRIBUTES");
/// What such an attribute stands for.
inline constexpr QLatin1String wsAttributeProperties("WS_DIRECTORY_GET_ATTRIBUTE_PROPERTIES");
/// One value of a contact.
inline constexpr QLatin1String wsAttributeByContactId("WS_DIRECTORY_GETATTRIBUTEBYCONTACTID");
/// The comparisons that a search may ask for.
inline constexpr QLatin1String wsOperators("WS_DIRECTORY_GET_OPERATORS");
/// The company directories that are searched.
inline constexpr QLatin1String wsDirectories("WS_DIRECTORY_GET_DIRECTORIES");
/// Whether a search by criteria was accepted.
inline constexpr QLatin1String wsSearch("WS_DIRECTORY_SEARCH");
/// Whether a search by name was accepted.
inline constexpr QLatin1String wsSearchByFullName("WS_DIRECTORY_SEARCH_BY_FULL_NAME");
/// A packet, with its PacketStatus.
inline constexpr QLatin1String wsNextResults("WS_DIRECTORY_GET_NEXT_RESULTS");
/// A search has been stopped.
inline constexpr QLatin1String wsStopSearch("WS_DIRECTORY_STOP_SEARCH");
/// The number in the form in which it is dialled.
inline constexpr QLatin1String wsCanonizeNumber("WS_DIRECTORY_CANONIZE_NUMBER");
/// The manager came or ends.
inline constexpr QLatin1String wsManagerAvailability("WSManagerAvailabilityEvent");
/// The company directory came or went.
inline constexpr QLatin1String wsDirectoryAvailability("UDAAvailabilityEvent");

// Raised by others, for the directory.
/// A synchronisation owner takes or frees a module.
inline constexpr QLatin1String readOnlyMode("READ_ONLY_MODE");
/// The screen shows what it is told.
inline constexpr QLatin1String presentationLoaded("presentationLoaded");

// Between telephony and the presentation.
/// A call comes in, from this number.
inline constexpr QLatin1String incomingCall("incomingCall");
/// It was taken, refused or given up.
inline constexpr QLatin1String callEnded("callEnded");
/// The user wants to call this number, which can be dialled as it is.
inline constexpr QLatin1String callRequested("callRequested");

} // namespace EventName

/// The names of their arguments, by which these are read.
namespace ArgumentName {
inline constexpr QLatin1String reqId("reqId"); ///< the request id of the call that brought the event about
inline constexpr QLatin1String contacts("contacts");
inline constexpr QLatin1String contactIds("contactIds");
inline constexpr QLatin1String onlyPhotoHasChanged("onlyPhotoHasChanged");
inline constexpr QLatin1String requestedByUser("requestedByUser");
inline constexpr QLatin1String searchId("searchId");
inline constexpr QLatin1String nbResults("nbResults");
inline constexpr QLatin1String listContactSummary("listContactSummary");
inline constexpr QLatin1String contact("contact");
inline constexpr QLatin1String contactId("contactId");
inline constexpr QLatin1String imAddress("imAddress");
inline constexpr QLatin1String fileName("fileName");
inline constexpr QLatin1String status("status");
inline constexpr QLatin1String cause("cause");
inline constexpr QLatin1String response("response"); ///< the status in words, for the log
inline constexpr QLatin1String result("result");
inline constexpr QLatin1String moduleName("moduleName");
inline constexpr QLatin1String readOnly("readOnly");
inline constexpr QLatin1String phoneNumber("phoneNumber");
} // namespace ArgumentName

/// How things stand after a packet of results: the `status` of wsNextResults. Any other value means More.
enum class PacketStatus {
    More = 1,     ///< there may be more
    Finished = 2, ///< that was all
    TimedOut = 3  ///< the company directory does not answer; there may have been more
};
