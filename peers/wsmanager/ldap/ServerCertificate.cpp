// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/ldap/ServerCertificate.h"

#include "peers/wsmanager/company/LdapMemory.h"

#include <QDate>

namespace {

/// Goes through the elements of a certificate, one inside the other. Once something is not what it should be, all that
/// follows is empty.
class Elements
{
public:
    explicit Elements(QByteArray der)
    {
        berval bytes{ber_len_t(der.size()), der.data()};
        m_rest.reset(ber_init(&bytes));
    }

    /// Goes inside the next element.
    void enter()
    {
        ber_len_t length = 0;
        take(m_rest ? ber_skip_tag(m_rest.get(), &length) : LBER_DEFAULT);
    }
    bool isNext(ber_tag_t tag)
    {
        ber_len_t length = 0;
        return m_rest && ber_peek_tag(m_rest.get(), &length) == tag;
    }
    /// The next element without, or with, its tag and length.
    QByteArray content() { return next(ber_skip_element); }
    QByteArray whole() { return next(ber_skip_raw); }

private:
    template <typename Skip>
    QByteArray next(Skip skip)
    {
        berval element{0, nullptr};
        return take(m_rest ? skip(m_rest.get(), &element) : LBER_DEFAULT)
                   ? QByteArray(element.bv_val, qsizetype(element.bv_len))
                   : QByteArray();
    }
    bool take(ber_tag_t tag)
    {
        if (tag == LBER_DEFAULT)
            m_rest.reset();
        return tag != LBER_DEFAULT;
    }

    LdapBytes m_rest;
};

QString nameOf(QByteArray name)
{
    berval in{ber_len_t(name.size()), name.data()};
    berval out{0, nullptr};
    if (name.isEmpty() || ldap_X509dn2bv(&in, &out, nullptr, 0) != LDAP_SUCCESS)
        return QString();
    const LdapText owned(out.bv_val);
    return QString::fromUtf8(out.bv_val, qsizetype(out.bv_len));
}

/// The day in "261124120000Z" (of the years 1950 to 2049) or "20261124120000Z".
QDate dayOf(const QByteArray &time)
{
    const bool isShort = time.size() == 13;
    const QByteArray century = !isShort ? "" : time.startsWith('5') || time >= "6" ? "19" : "20";
    return QDate::fromString(QString::fromLatin1((century + time).left(8)), QStringLiteral("yyyyMMdd"));
}

} // namespace

QString ServerCertificate::textOf(const QByteArray &der)
{
    Elements elements(der);
    elements.enter(); // the certificate
    elements.enter(); // what is signed
    if (elements.isNext(0xa0))
        elements.content(); // the version
    elements.content();     // the serial number
    elements.content();     // the kind of signature
    const QString issuer = nameOf(elements.whole());
    elements.enter();   // the time in which it is good
    elements.content(); // the first day
    const QDate last = dayOf(elements.content());
    const QString subject = nameOf(elements.whole());
    if (issuer.isEmpty() || !last.isValid())
        return QString();
    return QStringLiteral("certificate of %1, signed by %2, good until %3")
        .arg(subject, issuer, last.toString(Qt::ISODate));
}
