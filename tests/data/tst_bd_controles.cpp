#include "apoio.h"
#include "passos.h"

#include "data/bd.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "platform/twips.h"
#include "support/suporte.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Real combos, lists and grids on record sets: what they show and which record a choice leads to. The classes are
/// 1 a, 2 b, 3 B and 4 without a name.
class TstBdControles final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Registro> mRegistro;
    std::shared_ptr<RecordSet> mSet;
    void play(const QString &steps) const { teste::play(*mSet, *mRegistro, steps); }

private slots:
    void init();
    void cleanup();
    void comboListsAColumn();
    void emptySetKeepsTheOldList();
    void comboIsCleared();
    void chooses_data();
    void chooses();
    void nothingChosen_data();
    void nothingChosen();
    void comboOfAnUnknownAliasFails();
    void listFollowsTheRecords();
    void choiceKeepsItsRow();
    void textSurvivesReadingAgain();
    void newListIsSilent();
    void secondColumn_data();
    void secondColumn();
    void gridShowsAllFields();
    void gridWidths_data();
    void gridWidths();
    void listsAreCleared();
    void controlShowsAField();
    void controlOfAnEmptySet();
};

void TstBdControles::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro = std::make_unique<Registro>();
    mRegistro->sql(u"INSERT INTO CL_Classes VALUES (1, 'a', 'x', ''), (2, 'b', 'y', ''), (3, 'B', 'z', ''),"
                   "(4, NULL, NULL, '')"_s);
    mRegistro->open();
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"vazio"_s);
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    mSet = gBD->GetRecordSet(u"RS"_s);
}

void TstBdControles::cleanup()
{
    mSet.reset();
    gBD.reset();
    mRegistro.reset();
}

static QString listed(const QAbstractItemModel &model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts << model.index(row, 0).data().toString();
    return texts.join(u',');
}

void TstBdControles::comboListsAColumn()
{
    QComboBox combo;
    QString field;
    gBD->Combo_Set(combo, u"rs"_s, field);
    QCOMPARE(field, u"CL_Cod"_s); // the first column's name comes back
    QCOMPARE(listed(*combo.model()), u"1,2,3,4"_s);
    field = u"cl_nome"_s;
    gBD->Combo_Set(combo, u"RS"_s, field);
    QCOMPARE(field, u"cl_nome"_s);
    QCOMPARE(listed(*combo.model()), u"a,b,B,"_s);
    QCOMPARE(combo.currentText(), u""_s); // nobody chose anything
    field = u"AL_Nome"_s;
    QCOMPARE(failureOf([&] { gBD->Combo_Set(combo, u"RS"_s, field); }), int(kErroNome));
    QCOMPARE(listed(*combo.model()), u"a,b,B,"_s);
    QTest::keyClicks(&combo, u"nova"_s);
    QTest::keyClick(&combo, Qt::Key_Return);
    QCOMPARE(listed(*combo.model()), u"a,b,B,"_s); // inserts nothing
}

void TstBdControles::emptySetKeepsTheOldList()
{
    QComboBox combo;
    QString field = u"CL_Nome"_s;
    gBD->Combo_Set(combo, u"RS"_s, field);
    combo.setEditText(u"b"_s);
    field.clear();
    gBD->Combo_Set(combo, u"vazio"_s, field);
    QCOMPARE(field, u""_s);
    QCOMPARE(combo.currentText(), u""_s);
    QCOMPARE(listed(*combo.model()), u"a,b,B,"_s);
    QVERIFY(!gBD->Combo_Cod(combo, u"vazio"_s).isValid());
}

void TstBdControles::comboIsCleared()
{
    QComboBox combo;
    QString field = u"CL_Nome"_s;
    gBD->Combo_Set(combo, u"RS"_s, field);
    combo.setEditText(u"b"_s);
    gBD->Combo_Zera(combo);
    QCOMPARE(combo.currentText(), u""_s);
    QCOMPARE(combo.count(), 0);
    play(u"last; requery"_s); // it no longer listens
    QCOMPARE(combo.count(), 0);
    gBD->Combo_Zera(combo);
    QCOMPARE(gBD->Combo_Cod(combo, u"RS"_s), QVariant(1));
}

void TstBdControles::chooses_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("downs"); // presses of the arrow key
    QTest::addColumn<int>("code");
    QTest::newRow("typed") << u""_s << u"a"_s << 0 << 1;
    QTest::newRow("typed in another case") << u""_s << u"A"_s << 0 << 1;
    QTest::newRow("two that equal it: the first") << u""_s << u"b"_s << 0 << 2;
    QTest::newRow("unless the current one does") << u"last; previous"_s << u"b"_s << 0 << 3;
    QTest::newRow("a text that none has: the current one") << u"next"_s << u"x"_s << 0 << 2;
    QTest::newRow("the beginning of one is none") << u"last"_s << u"ax"_s << 0 << 4;
    QTest::newRow("picked") << u""_s << u""_s << 2 << 2;
    QTest::newRow("picked: its own row, not its text's") << u""_s << u""_s << 3 << 3;
}

void TstBdControles::chooses()
{
    QFETCH(QString, before);
    QFETCH(QString, typed);
    QFETCH(int, downs);
    QFETCH(int, code);
    QComboBox combo;
    QString field = u"CL_Nome"_s;
    play(before);
    gBD->Combo_Set(combo, u"RS"_s, field);
    QTest::keyClicks(combo.lineEdit(), typed);
    for (int i = 0; i < downs; ++i)
        QTest::keyClick(&combo, Qt::Key_Down);
    QCOMPARE(gBD->Combo_Cod(combo, u"RS"_s), QVariant(code));
    QCOMPARE(gBD->Campo(u"CL_Cod"_s, u"RS"_s), QVariant(code)); // it became current
}

void TstBdControles::nothingChosen_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QVariant>("code");
    QTest::addColumn<int>("number");
    QTest::newRow("the current record's") << u"next"_s << QVariant(2) << 0;
    QTest::newRow("the first one's behind the end") << u"end"_s << QVariant(1) << 0;
    QTest::newRow("nothing on no records") << u"remove all; requery"_s << QVariant() << 0;
    QTest::newRow("0 on a deleted one that was the last") << u"remove all"_s << QVariant(0) << 0;
    QTest::newRow("an added one has none") << u"add"_s << QVariant(u""_s) << 0;
    QTest::newRow("before the first: a failure") << u"previous"_s << QVariant() << int(kErroSemRegistro);
    QTest::newRow("on a deleted one: a failure") << u"remove"_s << QVariant() << int(kErroSemRegistro);
}

void TstBdControles::nothingChosen()
{
    QFETCH(QString, steps);
    QFETCH(QVariant, code);
    QFETCH(int, number);
    const BoxScript boxes;
    QComboBox combo;
    QListView list;
    play(steps);
    QVariant found;
    QCOMPARE(failureOf([&] { found = gBD->Combo_Cod(combo, u"RS"_s); }), number);
    QCOMPARE(found, code);
    found.clear();
    if (steps != "add"_L1) { // a list would read the second column then
        QCOMPARE(failureOf([&] { found = gBD->List_Cod(list, u"RS"_s); }), number);
        QCOMPARE(found, code);
    }
}

void TstBdControles::comboOfAnUnknownAliasFails()
{
    const BoxScript boxes; // this one asks for no box
    QComboBox combo;
    QCOMPARE(failureOf([&] { gBD->Combo_Cod(combo, u"nenhum"_s); }), int(kFalhaIndice));
    QCOMPARE(gBD->Resolve_Alias({}), qint16(3));
}

void TstBdControles::listFollowsTheRecords()
{
    QListView list;
    QString field = u"CL_Nome"_s;
    gBD->List_Set(list, u"RS"_s, field);
    const QAbstractItemModel &model = *list.model();
    play(u"add d"_s);
    QCOMPARE(listed(model), u"a,b,B,"_s); // pending
    play(u"update"_s);
    QCOMPARE(listed(model), u"a,b,B,,d"_s);
    play(u"first; remove"_s);
    QCOMPARE(listed(model), u"b,B,,d"_s);
    play(u"next; name z; update"_s);
    QCOMPARE(listed(model), u"z,B,,d"_s);
    play(u"sort CL_Nome DESC"_s);
    QCOMPARE(listed(model), u"z,d,B,"_s);
    play(u"filter CL_Cod>2"_s);
    QCOMPARE(listed(model), u"d,B,"_s);
    list.setCurrentIndex(model.index(0, 0));
    QCOMPARE(gBD->List_Cod(list, u"RS"_s), QVariant(5));
    play(u"requery"_s); // chosen again by its text
    QCOMPARE(list.currentIndex().data().toString(), u"d"_s);
    play(u"close"_s);
    QCOMPARE(model.rowCount(), 0);
    field.clear();
    gBD->List_Set(list, u"vazio"_s, field); // an empty set clears it
    QCOMPARE(field, u"AL_Cod"_s);
    QCOMPARE(list.model()->rowCount(), 0);
}

/// Other rows may change meanwhile; only when they are read again the text decides.
void TstBdControles::choiceKeepsItsRow()
{
    QComboBox combo;
    QListView list;
    QString field = u"CL_Nome"_s;
    gBD->Combo_Set(combo, u"RS"_s, field);
    gBD->List_Set(list, u"RS"_s, field);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(&combo, Qt::Key_Down);
    list.setCurrentIndex(list.model()->index(2, 0));
    play(u"first; name q; update"_s);
    QCOMPARE(gBD->Combo_Cod(combo, u"RS"_s), QVariant(3));
    QCOMPARE(gBD->List_Cod(list, u"RS"_s), QVariant(3));
    play(u"first; filter CL_Cod>2"_s);
    QCOMPARE(gBD->List_Cod(list, u"RS"_s), QVariant(3));
    play(u"filter; requery"_s);
    QCOMPARE(gBD->Combo_Cod(combo, u"RS"_s), QVariant(2));
    play(u"first"_s);
    QCOMPARE(gBD->List_Cod(list, u"RS"_s), QVariant(2));
}

void TstBdControles::textSurvivesReadingAgain()
{
    QComboBox combo;
    QString field = u"CL_Nome"_s;
    gBD->Combo_Set(combo, u"RS"_s, field);
    combo.setEditText(u"b"_s);
    play(u"file DELETE FROM CL_Classes WHERE CL_Cod = 2; requery"_s);
    QCOMPARE(combo.currentText(), u"b"_s);
    QCOMPARE(gBD->Combo_Cod(combo, u"RS"_s), QVariant(3)); // chosen anew by its text
    play(u"first; file DELETE FROM CL_Classes WHERE CL_Cod = 3; requery"_s);
    QCOMPARE(combo.currentText(), u"b"_s);
    QCOMPARE(gBD->Combo_Cod(combo, u"RS"_s), QVariant(1)); // none has it any more
    QListView list;
    gBD->List_Set(list, u"RS"_s, field);
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"RS"_s); // the list holds the old one
    QCOMPARE(listed(*list.model()), u"a,"_s);
}

/// A handler of the combo's changes hears of the user's, not of a new list.
void TstBdControles::newListIsSilent()
{
    QComboBox combo;
    QString field = u"CL_Nome"_s;
    gBD->Combo_Set(combo, u"RS"_s, field);
    combo.setEditText(u"b"_s);
    QSignalSpy edits(&combo, &QComboBox::editTextChanged);
    QSignalSpy choices(&combo, &QComboBox::currentIndexChanged);
    field = u"CL_Prof"_s;
    gBD->Combo_Set(combo, u"RS"_s, field);
    play(u"requery; filter CL_Cod=1; filter"_s);
    QCOMPARE(combo.currentText(), u"b"_s);
    QCOMPARE(edits.size(), 0);
    QCOMPARE(choices.size(), 0);
    QTest::keyClick(combo.lineEdit(), Qt::Key_Backspace);
    QCOMPARE(edits.size(), 1);
}

void TstBdControles::secondColumn_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QVariant>("code");
    QTest::newRow("above 0") << u"7"_s << QVariant(7);
    QTest::newRow("0") << u"0"_s << QVariant(u"seg"_s);
    QTest::newRow("below 0") << u"-1"_s << QVariant(u"seg"_s);
    QTest::newRow("Null") << u"NULL"_s << QVariant(u"seg"_s);
    QTest::newRow("a text") << u"'x1'"_s << QVariant(u"seg"_s);
    QTest::newRow("a text that begins with a number") << u"'2x'"_s << QVariant(u"2x"_s);
}

void TstBdControles::secondColumn()
{
    QFETCH(QString, first);
    QFETCH(QVariant, code);
    gBD->Records_Set(u"Select %1 as A, 'seg' as B, 1 as C union all Select 90, 'x', 2 order by C"_s.arg(first), u"T"_s);
    QListView list;
    QTableView grid;
    QString field;
    gBD->List_Set(list, u"T"_s, field);
    gBD->Grid_Set(grid, u"T"_s);
    for (const bool chosen : {false, true}) {
        if (chosen) {
            list.setCurrentIndex(list.model()->index(0, 0));
            grid.setCurrentIndex(grid.model()->index(0, 1));
            gBD->MoveProximoRegistro(u"T"_s);
        }
        QCOMPARE(gBD->List_Cod(list, u"T"_s), code);
        QCOMPARE(gBD->Grid_Cod(grid, u"T"_s), code);
    }
    gBD->Records_Set(u"Select 0 as A"_s, u"T"_s); // no second column
    QCOMPARE(failureOf([&] { gBD->List_Cod(list, u"T"_s); }), int(kErroNome));
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
}

void TstBdControles::gridWidths_data()
{
    QTest::addColumn<qint32>("width0");
    QTest::addColumn<qint32>("width1");
    QTest::newRow("both") << 1500 << 3000;
    QTest::newRow("the first") << 1500 << 0;
    QTest::newRow("the second") << 0 << 3000;
    QTest::newRow("below 0 is none") << -1 << -1;
}

void TstBdControles::gridWidths()
{
    QFETCH(qint32, width0);
    QFETCH(qint32, width1);
    QTableView grid;
    gBD->Grid_Set(grid, u"RS"_s);
    const int before = grid.columnWidth(0);
    gBD->Grid_Set(grid, u"RS"_s, width0, width1);
    QCOMPARE(grid.columnWidth(0), width0 > 0 ? pixels(width0) : before);
    QCOMPARE(grid.columnWidth(1), width1 > 0 ? pixels(width1) : before);
}

void TstBdControles::listsAreCleared()
{
    QListView list;
    QTableView grid;
    QString field = u"CL_Nome"_s;
    gBD->List_Set(list, u"RS"_s, field);
    gBD->Grid_Set(grid, u"RS"_s);
    list.setCurrentIndex(list.model()->index(2, 0));
    gBD->List_Zera(list);
    gBD->Grid_Zera(grid);
    QCOMPARE(list.model()->rowCount(), 0);
    QCOMPARE(grid.model()->columnCount(), 0);
    QCOMPARE(gBD->List_Cod(list, u"RS"_s), QVariant(1)); // nothing is chosen any more
}

void TstBdControles::controlShowsAField()
{
    QLabel label(u"antes"_s);
    QLineEdit edit;
    gBD->Obj_Set(label, u"RS"_s, u"cl_nome"_s);
    gBD->Obj_Set(edit, u"RS"_s, u"CL_Cod"_s);
    QCOMPARE(label.text(), u"a"_s);
    play(u"next"_s);
    QCOMPARE(label.text(), u"b"_s);
    QCOMPARE(edit.text(), u"2"_s);
    play(u"name z; update"_s);
    QCOMPARE(label.text(), u"z"_s);
    play(u"file UPDATE CL_Classes SET CL_Nome = 'fora' WHERE CL_Cod = 2; resync"_s);
    QCOMPARE(label.text(), u"fora"_s);
    play(u"last"_s);
    QCOMPARE(label.text(), u""_s); // Null
    play(u"next"_s);
    QCOMPARE(edit.text(), u""_s);
    play(u"add"_s);
    QCOMPARE(edit.text(), u""_s);
    QCOMPARE(failureOf([&] { gBD->Obj_Set(label, u"RS"_s, u"AL_Nome"_s); }), int(kErroNome));
}

void TstBdControles::controlOfAnEmptySet()
{
    QLabel label(u"antes"_s);
    gBD->Obj_Set(label, u"vazio"_s, u"AL_Nome"_s);
    QCOMPARE(label.text(), u"antes"_s);
}

QTEST_MAIN(TstBdControles)
#include "tst_bd_controles.moc"
