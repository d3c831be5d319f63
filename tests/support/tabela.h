#pragma once

#include <QString>
#include <QTest>

#include <initializer_list>

namespace quorel::teste {

/// The rows of a table test: structs whose first member is the row's `const char *name`. The test has each with
/// QFETCH(Row, test).
template <typename Row>
void rows(std::initializer_list<Row> table)
{
    QTest::addColumn<Row>("test");
    for (const Row &each : table)
        QTest::newRow(each.name) << each;
}

/// Rows of one text each (UTF-8), which is the row's name too. The test has each with QFETCH(QString, text).
inline void texts(std::initializer_list<const char *> table)
{
    QTest::addColumn<QString>("text");
    for (const char *text : table)
        QTest::newRow(text) << QString::fromUtf8(text);
}

} // namespace quorel::teste
