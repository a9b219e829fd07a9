// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLatin1String>

/// The methods of the web-service manager. Their slots have the same names.
namespace WebServiceMethod {
inline constexpr QLatin1String getServiceRight("getServiceRight");
inline constexpr QLatin1String getAttributes("udaGetAttributes");
inline constexpr QLatin1String getAttributeProperties("udaGetAttributeProperties");
inline constexpr QLatin1String getAttributeTypeByContactId("getAttributeTypeByContactId");
inline constexpr QLatin1String getOperators("udaGetOperators");
inline constexpr QLatin1String getDirectories("udaGetDirectories");
inline constexpr QLatin1String searchByFullName("udaSearchByFullName");
inline constexpr QLatin1String search("udaSearch");
inline constexpr QLatin1String searchByIMAddress("udaSearchByIMAddress");
inline constexpr QLatin1String getNextResults("udaGetNextResults");
inline constexpr QLatin1String stopSearch("udaStopSearch");
inline constexpr QLatin1String getContactProfile("udaGetContactProfile");
inline constexpr QLatin1String makeDialableCallNumber("makeDialableCallNumber");
} // namespace WebServiceMethod

/// What stands in their arguments.
namespace WebServiceTerm {
inline constexpr QLatin1String companyDirectory("IcsUda"); ///< the right to search the company directory
inline constexpr QLatin1String allOf("AND");               ///< joins criteria that all hold
inline constexpr QLatin1String anyOf("OR");                ///< joins criteria of which any holds
inline constexpr QLatin1String equal("EQUAL");             ///< the operator of an exact match
/// The attribute that is the instant-messaging address, and the key of the misc pair that holds it on the phone.
inline constexpr QLatin1String imAddress("imAddress");
/// The attribute that stands for every number by which a caller is known.
inline constexpr QLatin1String anyNumber("TELEPHONENUMBER");
} // namespace WebServiceTerm
