#include "apoio.h"
#include "passos.h"

#include "platform/twips.h"
#include "support/tabela.h"

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
    void comboListsAColumn();
    void emptySetKeepsTheOldList();
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
    void gridWidths();
    void areCleared();
    void controlShowsAField();

private:
    void showNames();
    QVariant comboCode() { return gBD->Combo_Cod(*mCombo, u"RS"_s); }
    QVariant listCode() { return gBD->List_Cod(*mList, u"RS"_s); }

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

/// The names of the classes in a combo and a list.
void TstBdControles::showNames()
{
    mField = u"CL_Nome"_s;
    gBD->Combo_Set(*mCombo, u"RS"_s, mField);
    gBD->List_Set(*mList, u"RS"_s, mField);
}

template <typename Controle>
static QString listed(const Controle &control)
{
    QStringList texts;
    for (int row = 0; row < control.model()->rowCount(); ++row)
        texts << control.model()->index(row, 0).data().toString();
    return texts.join(u',');
}

static void pick(QAbstractItemView &view, int row)
{
    view.setCurrentIndex(view.model()->index(row, 0));
}

static void goDown(QComboBox &combo, int times)
{
    for (int i = 0; i < times; ++i)
        QTest::keyClick(&combo, Qt::Key_Down);
}

void TstBdControles::comboListsAColumn()
{
    gBD->Combo_Set(*mCombo, u"rs"_s, mField);
    QCOMPARE(mField, u"CL_Cod"_s); // the first column's name comes back
    QCOMPARE(listed(*mCombo), u"1,2,3,4"_s);
    mField = u"cl_nome"_s;
    gBD->Combo_Set(*mCombo, u"RS"_s, mField);
    QCOMPARE(mField, u"cl_nome"_s);
    QCOMPARE(listed(*mCombo), u"a,b,B,"_s);
    QCOMPARE(mCombo->currentText(), u""_s); // nobody chose anything
    mField = u"AL_Nome"_s;
    QCOMPARE(failureOf([&] { gBD->Combo_Set(*mCombo, u"RS"_s, mField); }), int(kErroNome));
    QTest::keyClicks(mCombo.get(), u"nova"_s);
    QTest::keyClick(mCombo.get(), Qt::Key_Return);
    QCOMPARE(listed(*mCombo), u"a,b,B,"_s); // inserts nothing
}

void TstBdControles::emptySetKeepsTheOldList()
{
    showNames();
    mCombo->setEditText(u"b"_s);
    mField.clear();
    gBD->Combo_Set(*mCombo, u"vazio"_s, mField);
    QCOMPARE(mField, u""_s);
    QCOMPARE(mCombo->currentText(), u""_s);
    QCOMPARE(listed(*mCombo), u"a,b,B,"_s);
    QVERIFY(!gBD->Combo_Cod(*mCombo, u"vazio"_s).isValid());
    gBD->List_Set(*mList, u"vazio"_s, mField); // but clears that of a list
    QCOMPARE(mField, u"AL_Cod"_s);
    QCOMPARE(listed(*mList), u""_s);
}

struct Escolha
{
    const char *name;
    QString before, typed;
    int downs; ///< presses of the arrow key
    int code;
};

void TstBdControles::chooses_data()
{
    rows<Escolha>({
        {"typed", "", "a", 0, 1},
        {"typed in another case", "", "A", 0, 1},
        {"two that equal it: the first", "", "b", 0, 2},
        {"unless the current one does", "last; previous", "b", 0, 3},
        {"a text that none has: the current one", "next", "x", 0, 2},
        {"the beginning of one is none", "last", "ax", 0, 4},
        {"picked", "", "", 2, 2},
        {"picked: its own row, not its text's", "", "", 3, 3},
    });
}

void TstBdControles::chooses()
{
    QFETCH(Escolha, test);
    play(test.before);
    showNames();
    QTest::keyClicks(mCombo->lineEdit(), test.typed);
    goDown(*mCombo, test.downs);
    QCOMPARE(comboCode(), QVariant(test.code));
    QCOMPARE(gBD->Campo(u"CL_Cod"_s, u"RS"_s), QVariant(test.code)); // it became current
}

struct SemEscolha
{
    const char *name;
    QString steps;
    QVariant code;
    int number = 0;
};

void TstBdControles::nothingChosen_data()
{
    rows<SemEscolha>({
        {"the current record's", "next", 2},
        {"the first one's behind the end", "end", 1},
        {"nothing on no records", "remove all; requery", {}},
        {"0 on a deleted one that was the last", "remove all", 0},
        {"an added one has none", "add", u""_s},
        {"before the first: a failure", "previous", {}, kErroSemRegistro},
        {"on a deleted one: a failure", "remove", {}, kErroSemRegistro},
    });
}

void TstBdControles::nothingChosen()
{
    QFETCH(SemEscolha, test);
    play(test.steps);
    QVariant found;
    QCOMPARE(failureOf([&] { found = comboCode(); }), test.number);
    QCOMPARE(found, test.code);
    if (test.steps == "add"_L1)
        return; // a list would read the second column then
    found.clear();
    QCOMPARE(failureOf([&] { found = listCode(); }), test.number);
    QCOMPARE(found, test.code);
}

void TstBdControles::comboOfAnUnknownAliasFails()
{
    QCOMPARE(failureOf([&] { gBD->Combo_Cod(*mCombo, u"nenhum"_s); }), int(kFalhaIndice)); // without a box
    QCOMPARE(gBD->Resolve_Alias({}), qint16(3));
}

void TstBdControles::listFollowsTheRecords()
{
    showNames();
    const auto after = [&](const QString &steps) {
        play(steps);
        return listed(*mList);
    };
    QCOMPARE(after(u"add d"_s), u"a,b,B,"_s); // pending
    QCOMPARE(after(u"update"_s), u"a,b,B,,d"_s);
    QCOMPARE(after(u"first; remove"_s), u"b,B,,d"_s);
    QCOMPARE(after(u"next; name z; update"_s), u"z,B,,d"_s);
    QCOMPARE(after(u"sort CL_Nome DESC"_s), u"z,d,B,"_s);
    QCOMPARE(after(u"filter CL_Cod>2"_s), u"d,B,"_s);
    pick(*mList, 0);
    QCOMPARE(listCode(), QVariant(5));
    play(u"requery"_s); // chosen again by its text
    QCOMPARE(mList->currentIndex().data().toString(), u"d"_s);
    QCOMPARE(after(u"close"_s), u""_s);
}

/// Other rows may change meanwhile; only when they are read again the text decides.
void TstBdControles::choiceKeepsItsRow()
{
    showNames();
    goDown(*mCombo, 3);
    pick(*mList, 2);
    play(u"first; name q; update"_s);
    QCOMPARE(comboCode(), QVariant(3));
    QCOMPARE(listCode(), QVariant(3));
    play(u"first; filter CL_Cod>2"_s);
    QCOMPARE(listCode(), QVariant(3));
    play(u"filter; requery"_s);
    QCOMPARE(comboCode(), QVariant(2));
    play(u"first"_s);
    QCOMPARE(listCode(), QVariant(2));
}

void TstBdControles::textSurvivesReadingAgain()
{
    showNames();
    mCombo->setEditText(u"b"_s);
    play(u"file DELETE FROM CL_Classes WHERE CL_Cod = 2; requery"_s);
    QCOMPARE(mCombo->currentText(), u"b"_s);
    QCOMPARE(comboCode(), QVariant(3)); // chosen anew by its text
    play(u"first; file DELETE FROM CL_Classes WHERE CL_Cod = 3; requery"_s);
    QCOMPARE(mCombo->currentText(), u"b"_s);
    QCOMPARE(comboCode(), QVariant(1)); // none has it any more
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"RS"_s); // the list holds the old one
    QCOMPARE(listed(*mList), u"a,"_s);
}

/// A handler of the combo's changes hears of the user's, not of a new list.
void TstBdControles::newListIsSilent()
{
    showNames();
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

struct PrimeiraColuna
{
    const char *name;
    QString first;
    QVariant code;
};

void TstBdControles::secondColumn_data()
{
    rows<PrimeiraColuna>({
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
    QFETCH(PrimeiraColuna, test);
    gBD->Records_Set(
        u"Select %1 as A, 'seg' as B, 1 as C union all Select 90, 'x', 2 order by C"_s.arg(test.first), u"T"_s);
    QTableView grid;
    gBD->List_Set(*mList, u"T"_s, mField);
    gBD->Grid_Set(grid, u"T"_s);
    for (const bool chosen : {false, true}) {
        if (chosen) {
            pick(*mList, 0);
            pick(grid, 0);
            gBD->MoveProximoRegistro(u"T"_s);
        }
        QCOMPARE(gBD->List_Cod(*mList, u"T"_s), test.code);
        QCOMPARE(gBD->Grid_Cod(grid, u"T"_s), test.code);
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

void TstBdControles::areCleared()
{
    QTableView grid;
    showNames();
    gBD->Grid_Set(grid, u"RS"_s);
    mCombo->setEditText(u"b"_s);
    pick(*mList, 2);
    gBD->Combo_Zera(*mCombo);
    gBD->List_Zera(*mList);
    gBD->Grid_Zera(grid);
    play(u"last; requery"_s); // they no longer listen
    QCOMPARE(mCombo->currentText(), u""_s);
    QCOMPARE(listed(*mCombo) + listed(*mList), u""_s);
    QCOMPARE(grid.model()->columnCount(), 0);
    QCOMPARE(comboCode(), QVariant(1)); // nothing is chosen any more
    QCOMPARE(listCode(), QVariant(1));
    gBD->Combo_Zera(*mCombo);
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
