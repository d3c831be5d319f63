#pragma once

#include <QString>
#include <QTest>

#include <initializer_list>
#include <tuple>

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

/// The rows of a table test: {name, a value for each column}. The test has its row with row().
template <typename... Columns>
void rows(std::initializer_list<std::tuple<const char *, Columns...>> table)
{
    QTest::addColumn<std::tuple<Columns...>>("row");
    for (const auto &each : table)
        std::apply(
            [](const char *name, const auto &...values) { QTest::newRow(name) << std::tuple<Columns...>(values...); },
            each);
}

/// The row that a test runs with: const auto [first, second] = row<QString, int>(), the types as in rows().
template <typename... Columns>
std::tuple<Columns...> row()
{
    using Row = std::tuple<Columns...>;
    QFETCH(Row, row);
    return row;
}

/// Its name, where that is a value too.
inline QString rowName()
{
    return QString::fromUtf8(QTest::currentDataTag());
}

/// Rows that are their names.
inline void texts(std::initializer_list<const char *> table)
{
    QTest::addColumn<std::tuple<>>("row");
    for (const char *text : table)
        QTest::newRow(text) << std::tuple<>();
}

} // namespace quorel::teste
