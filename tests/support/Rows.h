// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTest>

/// The data of a test function: made with the names of the columns, whose types are the template's, in the same order;
/// then called with the name and the values of each row.
template <typename... Types>
class Rows
{
public:
    template <typename... Names>
    explicit Rows(const Names &...columns)
    {
        (QTest::addColumn<Types>(columns), ...);
    }
    void operator()(const QByteArray &name, const Types &...values) const
    {
        (QTest::newRow(name.constData()) << ... << values);
    }
};
