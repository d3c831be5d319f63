#pragma once

#include <QTest>

namespace quorel::teste {

/// The table of a test: its columns with their types, then one call a row. Texts are written plainly.
///     const Table<QString, int> row("text", "length");
///     row("accents count once", "ação", 4);
template <typename... Columns>
class Table final
{
public:
    template <typename... Names>
    requires(sizeof...(Names) == sizeof...(Columns)) explicit Table(Names... names)
    {
        (QTest::addColumn<Columns>(names), ...);
    }
    void operator()(const char *what, const Columns &...values) const { (QTest::newRow(what) << ... << values); }
};

} // namespace quorel::teste
