#pragma once

#include <QtTest>

/// The columns and rows of a _data function:
/// `DataTable<QString, int> row("text", "count"); row("one is lost", "abc", 3);`
template<typename... Columns>
class DataTable
{
public:
    template<typename... Names>
    explicit DataTable(Names... names)
    {
        (QTest::addColumn<Columns>(names), ...);
    }
    void operator()(const char *fault, const Columns &...cells) const
    {
        (QTest::newRow(fault) << ... << cells);
    }
};
