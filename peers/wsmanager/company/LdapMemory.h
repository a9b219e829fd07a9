// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ldap.h>

#include <memory>

// What the directory library hands over, owned. An empty pointer owns nothing.

template <auto giveBack>
struct LdapDeleter
{
    template <typename Type>
    void operator()(Type *memory) const
    {
        giveBack(memory);
    }
};

inline void ldapUnbind(LDAP *ldap)
{
    ldap_unbind_ext(ldap, nullptr, nullptr);
}

inline void ldapEndWalk(BerElement *position)
{
    ber_free(position, 0);
}

inline void ldapEndReading(BerElement *bytes)
{
    ber_free(bytes, 1);
}

using LdapHandle = std::unique_ptr<LDAP, LdapDeleter<ldapUnbind>>;
using LdapMessage = std::unique_ptr<LDAPMessage, LdapDeleter<ldap_msgfree>>;
using LdapText = std::unique_ptr<char, LdapDeleter<ldap_memfree>>;
using LdapValues = std::unique_ptr<berval *, LdapDeleter<ldap_value_free_len>>;
using LdapPosition = std::unique_ptr<BerElement, LdapDeleter<ldapEndWalk>>; ///< of a walk over attributes
using LdapBytes = std::unique_ptr<BerElement, LdapDeleter<ldapEndReading>>; ///< that are read, with a copy of them
using LdapControl = std::unique_ptr<LDAPControl, LdapDeleter<ldap_control_free>>;
using LdapControls = std::unique_ptr<LDAPControl *, LdapDeleter<ldap_controls_free>>;
using LdapUrl = std::unique_ptr<LDAPURLDesc, LdapDeleter<ldap_free_urldesc>>;
