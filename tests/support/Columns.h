#pragma once

#include <QTest>

namespace lucentra {

/// Declares the columns of a test's table, with one name for each type.
template <typename... Types, typename... Names>
void columns(Names... names)
{
    (QTest::addColumn<Types>(names), ...);
}

} // namespace lucentra
