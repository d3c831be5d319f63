#include "apoio.h"
#include "passos.h"

#include "data/bd.h"
#include "data/datas.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Reading fields and moving: exactly the guards that browsers rely on, on the classes 1 to 3 named a, b, c.
class TstBdCampos final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Registro> mRegistro;
    std::shared_ptr<RecordSet> mSet;
    void play(const QString &steps) const { teste::play(*mSet, *mRegistro, steps); }

private slots:
    void init();
    void cleanup();
    void moves_data();
    void moves();
    void guardsTellWhatSlipsThrough();
    void positions_data();
    void positions();
    void fieldHasItsType_data();
    void fieldHasItsType();
    void fieldByBookmark();
    void fieldOffTheRecords();
    void wrongFieldIsTold_data();
    void wrongFieldIsTold();
    void lists_data();
    void lists();
    void listEndsWhereItBegan_data();
    void listEndsWhereItBegan();
    void namesOfFields();
    void marks();
    void oneMarkForAllTables();
    void movesBy_data();
    void movesBy();
    void recordsAsText();
    void picture_data();
    void picture();
};

void TstBdCampos::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro = std::make_unique<Registro>();
    mRegistro->sql(u"INSERT INTO CL_Classes VALUES (1, 'a', 'x', ''), (2, 'b', NULL, ''), (3, 'c', 'y', '');"
                   "INSERT INTO AL_Alunos VALUES (5, 'Ana'), (6, 'Bia')"_s);
    mRegistro->open();
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"outra"_s);
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    mSet = gBD->GetRecordSet(u"RS"_s);
}

void TstBdCampos::cleanup()
{
    mSet.reset();
    gBD.reset();
    mRegistro.reset();
}

void TstBdCampos::moves_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("moves"); // n next, p previous, f first, l last
    QTest::addColumn<QString>("state");
    const auto row = [](const char *name, const char *before, const char *moves, const char *state) {
        QTest::newRow(name) << QString::fromLatin1(before) << QString::fromLatin1(moves) << QString::fromLatin1(state);
    };
    const char *nothing = "file DELETE FROM CL_Classes; requery";
    row("on", "", "n", "2/3 0 b");
    row("past the last", "last", "n", "EOF -3/3 0 3021");
    row("again: nothing", "last", "nn", "EOF -3/3 0 3021");
    row("back from there", "last", "nnp", "3/3 0 c");
    row("before the first", "", "p", "BOF -2/3 0 3021");
    row("again: nothing", "", "pp", "BOF -2/3 0 3021");
    row("on from there", "", "ppn", "1/3 0 a");
    row("first from behind the end", "end", "f", "1/3 0 a");
    row("last from before the beginning", "previous", "l", "3/3 0 c");
    row("nothing to move on", nothing, "npfl", "BOF EOF -1/0 0 3021");
    row("off a deleted one", "next; remove", "n", "2/2 0 c");
    row("off an added one", "add", "p", "3/4 2 c");
    row("an edit is saved", "name z", "np", "1/3 0 z");
}

void TstBdCampos::moves()
{
    QFETCH(QString, before);
    QFETCH(QString, moves);
    QFETCH(QString, state);
    const BoxScript boxes;
    play(before);
    for (const QChar move : moves) {
        const QVariant result = move == u'n' ? gBD->MoveProximoRegistro(u"RS"_s)
            : move == u'p'                   ? gBD->MoveRegistroAnterior(u"RS"_s)
            : move == u'f'                   ? gBD->MoveParaComecoDeArquivo(u"RS"_s)
                                             : gBD->MoveParaFimDeArquivo(u"RS"_s);
        QVERIFY(!result.isValid());
    }
    QCOMPARE(stateOf(*mSet), state);
}

/// An edit that can't be saved keeps the record current, and the report drops it.
void TstBdCampos::guardsTellWhatSlipsThrough()
{
    BoxScript boxes{Resposta::Ok};
    play(u"name z; file DELETE FROM CL_Classes"_s);
    gBD->MoveProximoRegistro(u"RS"_s);
    QCOMPARE(boxes.last(),
        (Caixa{u"O registro não existe mais no banco de dados; nada foi gravado."_s, u"RS - "_s, Icone::Informacao}));
    QCOMPARE(stateOf(*mSet), u"1/3 0 a"_s);
}

void TstBdCampos::positions_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<qint32>("position");
    QTest::addColumn<qint32>("shown");
    QTest::addColumn<qint32>("count");
    QTest::addColumn<QString>("flags"); // end, beginning, neither away from the other, no rows
    const auto row = [](const char *name, const char *steps, int position, int shown, int count, const char *flags) {
        QTest::newRow(name) << QString::fromLatin1(steps) << position << shown << count << QString::fromLatin1(flags);
    };
    row("third", "last", 3, 3, 3, "");
    row("behind the last", "end", -3, 0, 3, "e");
    row("before the first", "previous", -2, 0, 3, "b");
    row("just added", "add", -1, 0, 4, "");
    row("deleted", "remove", -1, 0, 2, "");
    row("nothing", "remove all; requery", -1, 0, 0, "eb0v");
    row("all deleted, still on the last", "remove all", -1, 0, 0, "v");
    row("filtered", "filter CL_Cod>1; last", 2, 2, 2, "");
    row("all filtered out", "filter CL_Cod>9", -1, 0, 0, "eb0v");
}

void TstBdCampos::positions()
{
    QFETCH(QString, steps);
    QFETCH(qint32, position);
    QFETCH(qint32, shown);
    QFETCH(qint32, count);
    QFETCH(QString, flags);
    const BoxScript boxes;
    play(steps);
    QCOMPARE(gBD->Posicao(u"RS"_s), position);
    QCOMPARE(gBD->PosicaoRegistroAtual(u"RS"_s), shown);
    QCOMPARE(gBD->NumeroTotalDeRegistros(), count);
    QCOMPARE(gBD->FimDeArquivo(u"RS"_s), flags.contains(u'e'));
    QCOMPARE(gBD->ComecoDeArquivo(u"RS"_s), flags.contains(u'b'));
    QCOMPARE(gBD->RecordSetVazia(u"RS"_s), flags.contains(u'0'));
    QCOMPARE(gBD->TabelaVazia(u"RS"_s), flags.contains(u'v'));
}

void TstBdCampos::fieldHasItsType_data()
{
    QTest::addColumn<QString>("expression"); // what the store holds
    QTest::addColumn<QString>("column");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char *column, const char *expression, const QVariant &value) {
        QTest::addRow("%s %s", column, expression)
            << QString::fromLatin1(expression) << QString::fromLatin1(column) << value;
    };
    row("INTEGER", "7", 7);
    row("INTEGER", "-2147483648", std::numeric_limits<qint32>::min());
    row("INTEGER", "2147483648", qlonglong(2147483648));
    row("INTEGER", "NULL", u""_s);
    row("REAL", "1.5", 1.5);
    row("REAL", "2", 2.0);
    row("BOOLEAN", "1", true);
    row("BOOLEAN", "0", false);
    row("DATETIME", "'2026-11-24 10:00:00'", wallClock({2026, 11, 24}, {10, 0}));
    row("DATETIME", "'ontem'", u"ontem"_s);
    row("DATETIME", "NULL", u""_s);
    row("VARCHAR", "'x'", u"x"_s);
    row("VARCHAR", "12", u"12"_s);
    row("TEXT", "''", u""_s);
    row("BLOB", "x'00ff'", QByteArray("\0\xff", 2));
}

void TstBdCampos::fieldHasItsType()
{
    QFETCH(QString, expression);
    QFETCH(QString, column);
    QFETCH(QVariant, value);
    mRegistro->sql(u"CREATE TABLE T (Campo "_s + column + u"); INSERT INTO T VALUES ("_s + expression + u')');
    gBD->Records_Set(u"Select * From T"_s, u"T"_s);
    const QVariant read = gBD->Campo(u"cAMPO"_s, u"t"_s);
    QCOMPARE(read.typeId(), value.typeId());
    QCOMPARE(read, value);
    QCOMPARE(gBD->Campo(0), value);
}

void TstBdCampos::fieldByBookmark()
{
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s, 3), QVariant(u"c"_s));
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s, u""_s), QVariant(u"c"_s)); // none; it stays there
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s, u"2"_s), QVariant(u"b"_s));
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s, 77), QVariant(u"a"_s));
    QVERIFY(!gBD->Campo({}, u"RS"_s).isValid());
    play(u"add"_s);
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s), QVariant(u""_s));
}

void TstBdCampos::fieldOffTheRecords()
{
    const BoxScript boxes;
    for (const QString &steps : {u"end"_s, u"first; previous"_s, u"remove all; requery"_s}) {
        if (steps.startsWith("remove"_L1))
            play(u"first"_s);
        play(steps);
        QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s), QVariant(u""_s));
        QCOMPARE(gBD->Campo(u"Nada"_s, u"RS"_s, 2), QVariant(u""_s)); // not even looked at
    }
}

void TstBdCampos::wrongFieldIsTold_data()
{
    QTest::addColumn<QVariant>("field");
    QTest::addColumn<QString>("steps");
    QTest::addColumn<Caixa>("box");
    const QString lost = u"O item não foi encontrado na coleção com o nome ou número pedido.\r\nCampo (%1)\r\n"
                         "O nome do campo não esta na tabela !!!"_s;
    QTest::newRow("name") << QVariant(u"AL_Nome"_s) << u""_s
                          << Caixa{lost.arg(u"AL_Nome"_s), u"Rs - Campo"_s, Icone::Critico};
    QTest::newRow("number") << QVariant(9) << u""_s << Caixa{lost.arg(9), u"Rs - Campo"_s, Icone::Critico};
    QTest::newRow("on a deleted record")
        << QVariant(u"CL_Nome"_s) << u"remove"_s
        << Caixa{u"Não há registro atual: BOF ou EOF é verdadeiro, ou o registro atual foi excluído."_s,
               u"Rs - Campo"_s, Icone::Informacao};
    QTest::newRow("while editing, which is dropped")
        << QVariant(u"AL_Nome"_s) << u"name z"_s << Caixa{lost.arg(u"AL_Nome"_s), u"Rs - Campo"_s, Icone::Critico};
}

void TstBdCampos::wrongFieldIsTold()
{
    QFETCH(QVariant, field);
    QFETCH(QString, steps);
    QFETCH(Caixa, box);
    BoxScript boxes{Resposta::Ok};
    play(steps);
    QVERIFY(!gBD->Campo(field, u"Rs"_s).isValid());
    QCOMPARE(boxes.last(), box);
    QVERIFY(mSet->EditMode() != kEdicaoEmCurso);
}

void TstBdCampos::lists_data()
{
    QTest::addColumn<QStringList>("fields"); // two fields and their separator
    QTest::addColumn<QString>("text");
    QTest::newRow("two fields") << QStringList{u"CL_Cod"_s, u"CL_Prof"_s, u"-"_s} << u"1-x;2-;3-y"_s;
    QTest::newRow("one by name") << QStringList{u"cl_nome"_s, u""_s, u"-"_s} << u"a;b;c"_s;
    QTest::newRow("one by number") << QStringList{u"1"_s, u""_s, u"-"_s} << u"a;b;c"_s;
    QTest::newRow("all") << QStringList{u""_s, u""_s, u"-"_s} << u"1-a-x--;2-b---;3-c-y--"_s;
    QTest::newRow("all: the second field alone counts for nothing")
        << QStringList{u""_s, u"CL_Nome"_s, u"-"_s} << u"1-a-x--;2-b---;3-c-y--"_s;
}

void TstBdCampos::lists()
{
    QFETCH(QStringList, fields);
    QFETCH(QString, text);
    QCOMPARE(gBD->lista(u"RS"_s, fields[0], u";"_s, fields[1], fields[2]), text);
    play(u"filter CL_Cod>9"_s);
    QCOMPARE(gBD->lista(u"RS"_s, fields[0], u";"_s, fields[1], fields[2]), u""_s);
}

void TstBdCampos::listEndsWhereItBegan_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("state");
    QTest::newRow("second") << u"next"_s << u"2/3 0 b"_s;
    QTest::newRow("behind the last: stays there") << u"end"_s << u"EOF -3/3 0 3021"_s;
    QTest::newRow("filtered") << u"filter CL_Cod>1; last"_s << u"2/2 0 c"_s;
    QTest::newRow("a field that is not there fails") << u"last"_s << u"3/3 0 c"_s;
}

void TstBdCampos::listEndsWhereItBegan()
{
    QFETCH(QString, steps);
    QFETCH(QString, state);
    play(steps);
    gBD->lista(u"RS"_s, u"CL_Nome"_s);
    QCOMPARE(stateOf(*mSet), state);
    QCOMPARE(failureOf([] { gBD->lista(u"RS"_s, u"AL_Nome"_s); }), int(kErroNome));
}

void TstBdCampos::namesOfFields()
{
    QCOMPARE(gBD->NomeCampo(0, u"RS"_s), u"CL_Cod"_s);
    QCOMPARE(gBD->NomeCampo(-1, u"RS"_s, u", "_s), u"CL_Cod, CL_Nome, CL_Prof, CL_Senha"_s);
    QCOMPARE(gBD->NomeCampo(-1, u"RS"_s), u"CL_CodCL_NomeCL_ProfCL_Senha"_s);
    QCOMPARE(failureOf([] { gBD->NomeCampo(4, u"RS"_s); }), int(kErroNome));
    QCOMPARE(failureOf([] { gBD->NomeCampo(-2, u"RS"_s); }), int(kErroNome));
}

void TstBdCampos::marks()
{
    play(u"last"_s);
    gBD->VoltaPosicao(u"RS"_s); // no mark yet: to the first
    QCOMPARE(stateOf(*mSet), u"1/3 0 a"_s);
    play(u"next"_s);
    QVERIFY(gBD->MarcaPosicao(u"RS"_s));
    play(u"end"_s);
    QVERIFY(!gBD->MarcaPosicao(u"RS"_s)); // keeps the old one
    QVERIFY(!gBD->VoltaPosicao(u"RS"_s).isValid());
    QCOMPARE(stateOf(*mSet), u"2/3 0 b"_s);
    play(u"filter CL_Cod<>2"_s);
    gBD->VoltaPosicao(u"RS"_s);
    QCOMPARE(stateOf(*mSet), u"1/2 0 a"_s);
}

void TstBdCampos::oneMarkForAllTables()
{
    play(u"last"_s);
    QVERIFY(gBD->MarcaPosicao(u"RS"_s));
    gBD->MoveProximoRegistro(u"outra"_s);
    gBD->VoltaPosicao(u"outra"_s); // a mark of no row there
    QCOMPARE(gBD->PosicaoRegistroAtual(), 1);
    QCOMPARE(gBD->PosicaoRegistroAtual(u"RS"_s), 3);
}

void TstBdCampos::movesBy_data()
{
    QTest::addColumn<qint32>("count");
    QTest::addColumn<qint32>("start");
    QTest::addColumn<QString>("state");
    QTest::newRow("from here") << 1 << 0 << u"3/3 0 c"_s;
    QTest::newRow("from the first") << 1 << 1 << u"2/3 0 b"_s;
    QTest::newRow("from the last") << 1 << 2 << u"EOF -3/3 0 3021"_s;
    QTest::newRow("from a bookmark") << 1 << 3 << u"EOF -3/3 0 3021"_s;
    QTest::newRow("none") << 0 << 1 << u"2/3 0 b"_s;
    QTest::newRow("backwards: none") << -1 << 0 << u"2/3 0 b"_s;
}

void TstBdCampos::movesBy()
{
    QFETCH(qint32, count);
    QFETCH(qint32, start);
    QFETCH(QString, state);
    BoxScript boxes{Resposta::Ok};
    play(u"next"_s);
    gBD->Mover(count, start, u"RS"_s);
    QCOMPARE(stateOf(*mSet), state);
    play(u"first; end"_s);
    gBD->Mover(1, 0, u"RS"_s);
    QCOMPARE(boxes.last().titulo, u"RS - Mover"_s);
}

void TstBdCampos::recordsAsText()
{
    BoxScript boxes{Resposta::Ok};
    play(u"next"_s);
    QCOMPARE(gBD->RetornaRegistroString(1, u"RS"_s, u","_s, u";"_s), QVariant(u"2,b,,;"_s));
    QCOMPARE(gBD->RetornaRegistroString(0, u"RS"_s, u","_s, u";"_s), QVariant(u"3,c,y,;"_s));
    QVERIFY(!gBD->RetornaRegistroString(0, u"RS"_s, u","_s, u";"_s).isValid()); // at the end
    QCOMPARE(boxes.last().titulo, u"RS - Mover"_s);
    QCOMPARE(boxes.last().icone, Icone::Informacao);
}

static QByteArray bitmap(int width)
{
    QImage image(width, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "BMP");
    return bytes;
}

void TstBdCampos::picture_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("width"); // 0: the control is left alone
    QTest::addColumn<bool>("told");
    QTest::newRow("within a kilobyte") << bitmap(5) << 5 << false;
    QTest::newRow("several kilobytes") << bitmap(900) << 900 << false;
    QTest::newRow("empty") << QByteArray("") << 0 << false;
    QTest::newRow("Null") << QByteArray() << 0 << false;
    QTest::newRow("no picture") << QByteArray("nada") << 0 << true;
}

void TstBdCampos::picture()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, width);
    QFETCH(bool, told);
    mRegistro->sql(u"CREATE TABLE T (Id INTEGER PRIMARY KEY, Fig BLOB); INSERT INTO T (Fig) VALUES ("_s
        + (bytes.isNull() ? u"NULL"_s : u"x'"_s + QString::fromLatin1(bytes.toHex()) + u'\'') + u')');
    gBD->Records_Set(u"Select * From T"_s, u"T"_s);
    const auto boxes = told ? std::make_unique<BoxScript>(std::initializer_list<Resposta>{Resposta::Ok})
                            : std::make_unique<BoxScript>();
    QLabel label;
    QDir::setCurrent(QDir::tempPath());
    gBD->CampoImagem(label, u"Fig"_s, u"T"_s);
    QCOMPARE(label.pixmap().width(), width);
    QVERIFY(!QFile::exists(u"temppic.bmp"_s));
    if (told)
        QCOMPARE(boxes->last(),
            (Caixa{ErroExecucao(kFalhaFigura).descricao() + u"\r\nCampo (Fig)"_s, u"T - Campo"_s, Icone::Critico}));
}

QTEST_MAIN(TstBdCampos)
#include "tst_bd_campos.moc"
