#include "apoio.h"
#include "passos.h"

#include "platform/twips.h"
#include "support/table.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTableView>

#include <utility>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Real combos, lists and grids on record sets: what they show and which record a choice leads to. The classes are
/// 1 a, 2 b, 3 B and 4 without a name.
class TstBdControles final : public TesteBD
{
    Q_OBJECT
public:
    TstBdControles()
        : TesteBD(u"INSERT INTO CL_Classes VALUES (1, 'a', 'x', ''), (2, 'b', 'y', ''), (3, 'B', 'z', ''),"
                  "(4, NULL, NULL, '')"_s)
    { }

private slots:
    void init();
    void chooses_data();
    void chooses() { plays(words()); }
    void lists_data();
    void lists() { plays(words()); }
    void fieldOfTheList();
    void newListIsSilent();
    void secondColumn_data();
    void secondColumn();
    void gridShowsAllFields();
    void gridWidths();
    void controlShowsAField();

private:
    void show(const QString &alias);
    Palavras words();

    std::unique_ptr<QComboBox> mCombo;
    std::unique_ptr<QListView> mList;
    QString mField;
};

void TstBdControles::init()
{
    TesteBD::init();
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"vazio"_s);
    mCombo = std::make_unique<QComboBox>();
    mList = std::make_unique<QListView>();
    mField.clear();
}

static QString listed(const QAbstractItemModel &model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts << model.index(row, 0).data().toString();
    return texts.join(u',');
}

static void pick(QAbstractItemView &view, int row)
{
    view.setCurrentIndex(view.model()->index(row, 0));
}

/// The names of the classes, or what there is of an empty set, in combo and list.
void TstBdControles::show(const QString &alias)
{
    mField = alias == "vazio"_L1 ? QString() : u"CL_Nome"_s;
    gBD->Combo_Set(*mCombo, alias, mField);
    gBD->List_Set(*mList, alias, mField);
}

static void type(QComboBox &combo, const QString &text)
{
    QTest::keyClicks(combo.lineEdit(), text);
    QTest::keyClick(&combo, Qt::Key_Return);
}

static void goDown(QComboBox &combo, int times)
{
    for (int i = 0; i < times; ++i)
        QTest::keyClick(&combo, Qt::Key_Down);
}

/// Those of passos.h, and what one does with combo and list and sees of them.
Palavras TstBdControles::words()
{
    Palavras words = wordsOn(*mSet, *mRegistro);
    words.insert({
        {u"show"_s, [&](auto &alias) { show(alias); }},
        {u"type"_s, [&](auto &text) { type(*mCombo, text); }}, // and Enter
        {u"put"_s, [&](auto &text) { mCombo->setEditText(text); }},
        {u"down"_s, [&](auto &times) { goDown(*mCombo, times.toInt()); }},
        {u"pick"_s, [&](auto &row) { pick(*mList, row.toInt()); }},
        {u"clear"_s, [&](auto &) { gBD->Combo_Zera(*mCombo), gBD->List_Zera(*mList); }},
        {u"typed"_s, [&](auto &) { return mCombo->currentText(); }},
        {u"options"_s, [&](auto &) { return listed(*mCombo->model()); }},
        {u"shown"_s, [&](auto &) { return listed(*mList->model()); }},
        {u"chosen"_s, [&](auto &) { return mList->currentIndex().data(); }},
        {u"combo"_s, [&](auto &alias) { return gBD->Combo_Cod(*mCombo, alias.isEmpty() ? u"RS"_s : alias); }},
        {u"list"_s, [&](auto &) { return gBD->List_Cod(*mList, u"RS"_s); }},
    });
    return words;
}

void TstBdControles::chooses_data()
{
    rows<QString, QString>({
        {"typed", "show RS; type a; combo", "1"},
        {"typed in another case", "show RS; type A; combo", "1"},
        {"two that equal it: the first", "show RS; type b; combo", "2"},
        {"unless the current one does", "last; previous; show RS; type b; combo", "3"},
        {"typed, off the records", "end; show RS; type b; combo", "2"},
        {"a text that none has: the current one", "next; show RS; type x; combo", "2"},
        {"the beginning of one is none", "last; show RS; type ax; combo", "4"},
        {"picked", "show RS; down 2; combo", "2"},
        {"picked: its own row, not its text's", "show RS; down 3; combo", "3"},
        {"picked in the list", "show RS; pick 2; list", "3"},
        {"it becomes current", "show RS; down 3; combo; Campo CL_Cod", "3"},

        {"nothing chosen: the current record's", "next; combo", "2"},
        {"of a list too", "next; list", "2"},
        {"behind the end: the first one's", "end; combo", "1"},
        {"of a list too, behind the end", "end; list", "1"},
        {"of no records: nothing", "remove all; requery; combo", "nothing"},
        {"of a list of none", "remove all; requery; list", "nothing"},
        {"of a deleted one that was the last: 0", "remove all; combo", "0"},
        {"of a list of deleted ones", "remove all; list", "0"},
        {"of an added one: it has none", "add; combo", ""},
        {"before the first: a failure", "previous; combo", "fails 3021"},
        {"before the first, in a list", "previous; list", "fails 3021"},
        {"on a deleted one: a failure", "remove; combo", "fails 3021"},
        {"on a deleted one, in a list", "remove; list", "fails 3021"},
        {"an unknown alias: a failure without a box", "combo nenhum", "fails 9"},

        {"a choice keeps its row when others change", "show RS; down 3; first; name q; update; combo", "3"},
        {"in a list too", "show RS; pick 2; first; name q; update; list", "3"},
        {"in a list filtered", "show RS; pick 2; filter CL_Cod>2; list", "3"},
        {"read again, its text decides", "show RS; down 3; first; requery; combo", "2"},
        {"in a list too, its text", "show RS; pick 2; requery; chosen", "b"},
        {"the text stays when it is read again",
            "show RS; put b; file DELETE FROM CL_Classes WHERE CL_Cod = 2; requery; typed", "b"},
        {"and chooses anew", "show RS; put b; file DELETE FROM CL_Classes WHERE CL_Cod = 2; requery; combo", "3"},
        {"unless none has it any more", "show RS; put b; file DELETE FROM CL_Classes WHERE CL_Cod > 1; requery; combo",
            "1"},
    });
}

void TstBdControles::lists_data()
{
    rows<QString, QString>({
        {"lists a column", "show RS; options", "a,b,B,"},
        {"nobody chose anything", "show RS; typed", ""},
        {"what is typed is not inserted", "show RS; type nova; options", "a,b,B,"},
        {"kept: an empty set leaves the combo's list", "show RS; show vazio; options", "a,b,B,"},
        {"and clears its text", "show RS; put b; show vazio; typed", ""},
        {"its code is nothing", "show RS; show vazio; combo vazio", "nothing"},
        {"and the list's rows", "show RS; show vazio; shown", ""},
        {"a row that is pending is not listed", "show RS; add d; shown", "a,b,B,"},
        {"added", "show RS; add d; update; shown", "a,b,B,,d"},
        {"deleted", "show RS; remove; shown", "b,B,"},
        {"changed", "show RS; next; name z; update; shown", "a,z,B,"},
        {"sorted", "show RS; sort CL_Nome DESC; shown", "b,B,a,"},
        {"filtered", "show RS; filter CL_Cod>2; shown", "B,"},
        {"closed", "show RS; close; shown", ""},

        {"cleared: no text", "show RS; put b; clear; requery; typed", ""},
        {"cleared: no options", "show RS; put b; clear; last; requery; options", ""},
        {"cleared: no rows", "show RS; clear; last; requery; shown", ""},
        {"cleared: nothing chosen", "show RS; put b; clear; clear; combo", "1"},
        {"cleared: nothing chosen in a list", "show RS; pick 2; clear; list", "1"},
    });
}

void TstBdControles::fieldOfTheList()
{
    gBD->Combo_Set(*mCombo, u"rs"_s, mField);
    QCOMPARE(mField, u"CL_Cod"_s); // the first column's name comes back
    QCOMPARE(listed(*mCombo->model()), u"1,2,3,4"_s);
    mField = u"AL_Nome"_s;
    QCOMPARE(failureOf([&] { gBD->Combo_Set(*mCombo, u"RS"_s, mField); }), int(kErroNome));
    mField.clear();
    gBD->Combo_Set(*mCombo, u"vazio"_s, mField);
    QCOMPARE(mField, u""_s);
    gBD->List_Set(*mList, u"vazio"_s, mField);
    QCOMPARE(mField, u"AL_Cod"_s);
    QComboBox unknown; // does not name the last table
    QCOMPARE(failureOf([&] { gBD->Combo_Cod(unknown, u"nenhum"_s); }), int(kFalhaIndice));
    QCOMPARE(gBD->Resolve_Alias({}), qint16(3));
    play(u"last"_s);
    show(u"RS"_s);
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"RS"_s);
    QCOMPARE(listed(*mList->model()), u"a,b,B,"_s); // it holds the old one
}

/// A handler of the combo's changes hears of the user's, not of a new list.
void TstBdControles::newListIsSilent()
{
    show(u"RS"_s);
    mCombo->setEditText(u"b"_s);
    QSignalSpy edits(mCombo.get(), &QComboBox::editTextChanged);
    QSignalSpy choices(mCombo.get(), &QComboBox::currentIndexChanged);
    mField = u"CL_Prof"_s;
    gBD->Combo_Set(*mCombo, u"RS"_s, mField);
    play(u"requery; filter CL_Cod=1; filter"_s);
    QCOMPARE(mCombo->currentText(), u"b"_s);
    QCOMPARE(edits.size() + choices.size(), 0);
    QTest::keyClick(mCombo->lineEdit(), Qt::Key_Backspace);
    QCOMPARE(edits.size(), 1);
}

void TstBdControles::secondColumn_data()
{
    rows<QString, QVariant>({
        {"above 0", "7", 7},
        {"0", "0", u"seg"_s},
        {"below 0", "-1", u"seg"_s},
        {"Null", "NULL", u"seg"_s},
        {"a text", "'x1'", u"seg"_s},
        {"a text that begins with a number", "'2x'", u"2x"_s},
    });
}

void TstBdControles::secondColumn()
{
    const auto [first, code] = row<QString, QVariant>();
    gBD->Records_Set(u"Select %1 as A, 'seg' as B, 1 as C union all Select 90, 'x', 2 order by C"_s.arg(first), u"T"_s);
    QTableView grid;
    gBD->List_Set(*mList, u"T"_s, mField);
    gBD->Grid_Set(grid, u"T"_s);
    for (const bool chosen : {false, true}) {
        if (chosen) {
            pick(*mList, 0);
            pick(grid, 0);
            gBD->MoveProximoRegistro(u"T"_s);
        }
        QCOMPARE(gBD->List_Cod(*mList, u"T"_s), code);
        QCOMPARE(gBD->Grid_Cod(grid, u"T"_s), code);
    }
    gBD->Records_Set(u"Select 0 as A"_s, u"T"_s); // no second column
    QCOMPARE(failureOf([&] { gBD->List_Cod(*mList, u"T"_s); }), int(kErroNome));
}

void TstBdControles::gridShowsAllFields()
{
    QTableView grid;
    gBD->Grid_Set(grid, u"RS"_s);
    const QAbstractItemModel &model = *grid.model();
    QCOMPARE(model.columnCount(), 4);
    QCOMPARE(model.headerData(2, Qt::Horizontal).toString(), u"CL_Prof"_s);
    QCOMPARE(model.index(1, 2).data().toString(), u"y"_s);
    QVERIFY(!model.headerData(4, Qt::Horizontal).isValid());
    grid.setCurrentIndex(model.index(2, 3));
    QCOMPARE(gBD->Grid_Cod(grid, u"RS"_s), QVariant(3));
    QCOMPARE(gBD->PosicaoRegistroAtual(), 3);
    play(u"file DELETE FROM CL_Classes WHERE CL_Cod = 1; requery"_s); // chosen again by the first column
    QCOMPARE(gBD->Grid_Cod(grid, u"RS"_s), QVariant(3));
    QCOMPARE(failureOf([&] { gBD->Grid_Set(grid, 9); }), int(kFalhaIndice));
    gBD->Grid_Zera(grid);
    QCOMPARE(grid.model()->columnCount(), 0);
}

void TstBdControles::gridWidths()
{
    for (const auto &[width0, width1] :
        {std::pair(1500, 3000), std::pair(1500, 0), std::pair(0, 3000), std::pair(-1, -1)}) {
        QTableView grid;
        gBD->Grid_Set(grid, u"RS"_s);
        const int before = grid.columnWidth(0);
        gBD->Grid_Set(grid, u"RS"_s, width0, width1);
        QCOMPARE(grid.columnWidth(0), width0 > 0 ? pixels(width0) : before);
        QCOMPARE(grid.columnWidth(1), width1 > 0 ? pixels(width1) : before);
    }
}

void TstBdControles::controlShowsAField()
{
    QLabel label(u"antes"_s);
    QLineEdit edit;
    gBD->Obj_Set(label, u"vazio"_s, u"AL_Nome"_s);
    QCOMPARE(label.text(), u"antes"_s); // no records, no binding
    gBD->Obj_Set(label, u"RS"_s, u"cl_nome"_s);
    gBD->Obj_Set(edit, u"RS"_s, u"CL_Cod"_s);
    const auto after = [&](const QString &steps) {
        play(steps);
        return label.text() + u'/' + edit.text();
    };
    QCOMPARE(after({}), u"a/1"_s);
    QCOMPARE(after(u"next"_s), u"b/2"_s);
    QCOMPARE(after(u"name z; update"_s), u"z/2"_s);
    QCOMPARE(after(u"file UPDATE CL_Classes SET CL_Nome = 'fora' WHERE CL_Cod = 2; resync"_s), u"fora/2"_s);
    QCOMPARE(after(u"last"_s), u"/4"_s); // Null
    QCOMPARE(after(u"next"_s), u"/"_s);
    QCOMPARE(after(u"add"_s), u"/"_s);
    QCOMPARE(failureOf([&] { gBD->Obj_Set(label, u"RS"_s, u"AL_Nome"_s); }), int(kErroNome));
}

QTEST_MAIN(TstBdControles)
#include "tst_bd_controles.moc"
