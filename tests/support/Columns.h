#pragma once

#include <QTest>

#include <tuple>
#include <type_traits>
#include <vector>

namespace lucentra {

inline std::vector<const char *> columnNames; ///< of the table that was declared last, which is the running test's

/// Declares the columns of a test's table, with one name for each type. Returns a function that adds a row: its name and
/// its values.
template <typename... Types, typename... Names>
auto columns(Names... names)
{
    (QTest::addColumn<Types>(names), ...);
    columnNames = {names...};
    return
        [](const char *name, const std::type_identity_t<Types> &...values) { (QTest::newRow(name) << ... << values); };
}

/// The values of the running test's row: those of its first columns, as many as there are types.
template <typename... Types>
std::tuple<Types...> fetched()
{
    auto name = columnNames.begin();
    return {*static_cast<Types *>(QTest::qData(*name++, qMetaTypeId<Types>()))...}; // braces: from left to right
}

} // namespace lucentra
