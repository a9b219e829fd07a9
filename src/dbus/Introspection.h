// SPDX-License-Identifier: Apache-2.0
#pragma once

// The introspection text that the directory publishes. Two signatures differ from the values that travel, a{si} for
// a{ss} and a(s) for as; the text has been published like this and stays, callers go by the type names beside them.
// A macro, because the class information of the adaptor takes nothing but a literal.
// clang-format off
#define KESTIN_DIRECTORY_INTROSPECTION \
    "  <interface name=\"com.norlan.Kestin.KestinInterface\">\n" \
    "    <method name=\"createLocalContact\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"reqId\"/>\n" \
    "      <arg direction=\"in\" type=\"(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\" name=\"contact\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In1\" value=\"Contact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"createLocalContacts\">\n" \
    "      <arg direction=\"out\" type=\"a{si}\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"QMapQStringQString\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"reqId\"/>\n" \
    "      <arg direction=\"in\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\" name=\"contacts\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In1\" value=\"ListContact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"modifyLocalContact\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"reqId\"/>\n" \
    "      <arg direction=\"in\" type=\"(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\" name=\"contact\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In1\" value=\"Contact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"modifyLocalContacts\">\n" \
    "      <arg direction=\"out\" type=\"a{si}\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"QMapQStringQString\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"reqId\"/>\n" \
    "      <arg direction=\"in\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\" name=\"contacts\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In1\" value=\"ListContact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"deleteLocalContact\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"reqId\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"idContact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"addContactToPreview\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"reqId\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"idContact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"removeContactFromPreview\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"reqId\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"idContact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"updateContactsPreview\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"reqId\"/>\n" \
    "      <arg direction=\"in\" type=\"a(s)\" name=\"contactsIds\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In1\" value=\"QStringList\"/>\n" \
    "      <arg direction=\"in\" type=\"b\" name=\"isPreviewed\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getContactById\">\n" \
    "      <arg direction=\"out\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListContact\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"idContact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getLocalContactByIMAddress\">\n" \
    "      <arg direction=\"out\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListContact\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"imAddress\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getContactToMerge\">\n" \
    "      <arg direction=\"out\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListContact\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"imAddress\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"phoneNumber\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"extentionPhone\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getLocalContactByEmailAddress\">\n" \
    "      <arg direction=\"out\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListContact\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"emailAddress\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getAllContactsInPreview\">\n" \
    "      <arg direction=\"out\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListContact\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"startInd\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"length\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getContactsByType\">\n" \
    "      <arg direction=\"out\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListContact\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"type\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getLocalContacts\">\n" \
    "      <arg direction=\"out\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListContact\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"startInd\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"length\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getLocalContacts\">\n" \
    "      <arg direction=\"out\" type=\"a(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListContact\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"phoneNumber\"/>\n" \
    "    </method>\n" \
    "    <method name=\"startSearchContactByName\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"searchId\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"name\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"nbContacts\"/>\n" \
    "      <arg direction=\"in\" type=\"b\" name=\"localOnly\"/>\n" \
    "    </method>\n" \
    "    <method name=\"startSearchContactByAllFields\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"searchId\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"criteria\"/>\n" \
    "      <arg direction=\"in\" type=\"b\" name=\"localOnly\"/>\n" \
    "    </method>\n" \
    "    <method name=\"startSearchContactByPhoneNumber\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"searchId\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"phoneNumber\"/>\n" \
    "      <arg direction=\"in\" type=\"b\" name=\"localOnly\"/>\n" \
    "    </method>\n" \
    "    <method name=\"startSearchContactByIMAddress\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"searchId\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"imAddress\"/>\n" \
    "      <arg direction=\"in\" type=\"b\" name=\"localOnly\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getSearchResults\">\n" \
    "      <arg direction=\"out\" type=\"a(sssssi)\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListContactSummary\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"searchId\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"startInd\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"length\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getContactFromSearch\">\n" \
    "      <arg direction=\"out\" type=\"(ssssssssssssssssssssssssssa{ss}bbisss((iii)(iiii)i))\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"Contact\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"searchId\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"contactId\"/>\n" \
    "    </method>\n" \
    "    <method name=\"purgeSearchResults\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"searchId\"/>\n" \
    "    </method>\n" \
    "    <method name=\"copyContactToLocal\">\n" \
    "      <arg direction=\"out\" type=\"s\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"idContact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getImAddressByContactId\">\n" \
    "      <arg direction=\"out\" type=\"s\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"idContact\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getContactTypeById\">\n" \
    "      <arg direction=\"out\" type=\"i\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"contactId\"/>\n" \
    "    </method>\n" \
    "    <method name=\"defaultContactsChanged\">\n" \
    "      <arg direction=\"out\" type=\"a(sssssssiiia(ss)bbs)\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListSetting\"/>\n" \
    "      <arg direction=\"in\" type=\"(sssssssiiia(ss)bbs)\" name=\"setting\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In0\" value=\"Setting\"/>\n" \
    "    </method>\n" \
    "    <method name=\"dirMaxContactChanged\">\n" \
    "      <arg direction=\"out\" type=\"a(sssssssiiia(ss)bbs)\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListSetting\"/>\n" \
    "      <arg direction=\"in\" type=\"(sssssssiiia(ss)bbs)\" name=\"setting\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In0\" value=\"Setting\"/>\n" \
    "    </method>\n" \
    "    <method name=\"dirSearchModeChanged\">\n" \
    "      <arg direction=\"out\" type=\"a(sssssssiiia(ss)bbs)\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListSetting\"/>\n" \
    "      <arg direction=\"in\" type=\"(sssssssiiia(ss)bbs)\" name=\"setting\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In0\" value=\"Setting\"/>\n" \
    "    </method>\n" \
    "    <method name=\"removeHttpsFromPhotoUrlChanged\">\n" \
    "      <arg direction=\"out\" type=\"a(sssssssiiia(ss)bbs)\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListSetting\"/>\n" \
    "      <arg direction=\"in\" type=\"(sssssssiiia(ss)bbs)\" name=\"setting\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In0\" value=\"Setting\"/>\n" \
    "    </method>\n" \
    "    <method name=\"userPhotoChanged\">\n" \
    "      <arg direction=\"out\" type=\"a(sssssssiiia(ss)bbs)\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"ListSetting\"/>\n" \
    "      <arg direction=\"in\" type=\"(sssssssiiia(ss)bbs)\" name=\"setting\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In0\" value=\"Setting\"/>\n" \
    "    </method>\n" \
    "    <method name=\"exportToXml\">\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"path\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"pageSize\"/>\n" \
    "      <arg direction=\"in\" type=\"b\" name=\"full\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"id\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"deviceId\"/>\n" \
    "      <arg direction=\"in\" type=\"((iii)(iiii)i)\" name=\"createdDate\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In5\" value=\"QDateTime\"/>\n" \
    "      <arg direction=\"in\" type=\"((iii)(iiii)i)\" name=\"previousExportDate\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.In6\" value=\"QDateTime\"/>\n" \
    "    </method>\n" \
    "    <method name=\"importFromXml\">\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"path\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getCapabilities\">\n" \
    "      <arg direction=\"out\" type=\"a{s(si)}\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"MapQStringCapability\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getCapabilities\">\n" \
    "      <arg direction=\"out\" type=\"a{s(si)}\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"MapQStringCapability\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"listId\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getCapability\">\n" \
    "      <arg direction=\"out\" type=\"(si)\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"Capability\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"name\"/>\n" \
    "    </method>\n" \
    "    <method name=\"getCapability\">\n" \
    "      <arg direction=\"out\" type=\"(si)\"/>\n" \
    "      <annotation name=\"org.qtproject.QtDBus.QtTypeName.Out0\" value=\"Capability\"/>\n" \
    "      <arg direction=\"in\" type=\"i\" name=\"listId\"/>\n" \
    "      <arg direction=\"in\" type=\"s\" name=\"name\"/>\n" \
    "    </method>\n" \
    "  </interface>\n"
// clang-format on
