#include "apoio.h"
#include "passos.h"

#include "data/bd.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// The dance of a change (add, assign, update, read again), its reports and what they leave behind.
class TstBdEdicao final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Registro> mRegistro;
    std::shared_ptr<RecordSet> mSet;
    void play(const QString &steps) const { teste::play(*mSet, *mRegistro, steps); }
    /// Codes and names in the file, after the instance was released.
    QString inFile();

private slots:
    void init();
    void cleanup();
    void assigns_data();
    void assigns();
    void includes_data();
    void includes();
    void refusedValueIsToldAndNothingStaysPending();
    void adding();
    void addingToNothingReadsItAgain();
    void cancelsAnAddition_data();
    void cancelsAnAddition();
    void cancelsAnEdit();
    void updates_data();
    void updates();
    void editedRowIsReadAgainFirst();
    void rowThatIsGoneIsTold();
    void failedUpdateLeavesNothingPending();
    void deletes_data();
    void deletes();
    void readsAgain();
    void modes_data();
    void modes();
    void savesAFile_data();
    void savesAFile();
};

void TstBdEdicao::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mRegistro = std::make_unique<Registro>();
    mRegistro->sql(u"INSERT INTO CL_Classes VALUES (1, 'a', 'x', ''), (2, 'b', 'x', ''), (3, 'c', 'y', '');"
                   "CREATE TABLE T (Id INTEGER PRIMARY KEY AUTOINCREMENT, Longo INTEGER, Duplo REAL, Logico BOOLEAN,"
                   "Texto VARCHAR, Bytes BLOB); INSERT INTO T (Longo, Texto, Logico) VALUES (7, 'velho', 1)"_s);
    mRegistro->open();
    gBD->Records_Set(u"Select * From T"_s, u"T"_s);
    gBD->Records_Set(u"Select * From CL_Classes"_s, u"RS"_s);
    mSet = gBD->GetRecordSet(u"RS"_s);
}

void TstBdEdicao::cleanup()
{
    mSet.reset();
    gBD.reset();
    mRegistro.reset();
}

QString TstBdEdicao::inFile()
{
    mSet.reset();
    gBD.reset();
    return mRegistro->sql(u"SELECT CL_Cod || coalesce(CL_Nome, '-') FROM CL_Classes ORDER BY CL_Cod"_s).join(u' ');
}

void TstBdEdicao::assigns_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<qint32>("kind");
    QTest::addColumn<QVariant>("kept");
    const auto row = [](const char *name, const QString &field, const QVariant &value, qint32 kind,
                         const QVariant &kept) { QTest::newRow(name) << field << value << kind << kept; };
    const QString text = u"Texto"_s;
    row("as it is", text, u"x"_s, kTrocaComoEsta, u"x"_s);
    row("an empty text, not Null", text, u""_s, kTrocaComoEsta, u""_s);
    row("nothing is an empty text", text, QVariant(), kTrocaComoEsta, u""_s);
    row("empty, whatever the kind", text, u""_s, kTrocaNumero, u""_s);
    row("empty, even of no kind", text, u""_s, 9, u""_s);
    row("a kind that is none writes nothing", text, u"x"_s, 9, u"velho"_s);
    row("as text", text, 12.5, kTrocaTexto, u"12.5"_s);
    row("a number 0 has a length", u"Longo"_s, 0, kTrocaNumero, 0);
    row("as number", u"Duplo"_s, u"9999 e mais"_s, kTrocaNumero, 9999.0);
    row("what begins with no number is 0", u"Duplo"_s, u"x9"_s, kTrocaNumero, 0.0);
    row("a number into a long", u"Longo"_s, 9999, kTrocaNumero, 9999);
    row("as boolean", u"Logico"_s, u"0"_s, kTrocaLogico, false);
    row("by number of the field", u"4"_s, u"x"_s, kTrocaComoEsta, u"x"_s);
}

void TstBdEdicao::assigns()
{
    QFETCH(QString, field);
    QFETCH(QVariant, value);
    QFETCH(qint32, kind);
    QFETCH(QVariant, kept);
    const BoxScript boxes;
    const QVariant which = field == "4"_L1 ? QVariant(4) : QVariant(field);
    gBD->RegistroTroca(which, value, u"t"_s, kind);
    QCOMPARE(gBD->Campo(which, u"T"_s), kept);
    gBD->RegistroAtualiza(u"T"_s);
    gBD->ReAtualizaRecordSet(u"T"_s);
    QCOMPARE(gBD->Campo(which, u"T"_s), kept);
    QCOMPARE(gBD->Campo(which, u"T"_s).typeId(), kept.typeId());
}

void TstBdEdicao::includes_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("kept");
    QTest::newRow("a text") << QVariant(u"x"_s) << QVariant(u"x"_s);
    QTest::newRow("an empty text") << QVariant(u""_s) << QVariant(u""_s);
    QTest::newRow("a number") << QVariant(3) << QVariant(u"3"_s);
    QTest::newRow("nothing") << QVariant() << QVariant(u"velho"_s);
}

void TstBdEdicao::includes()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, kept);
    gBD->RegistroInclui(u"Texto"_s, value, u"T"_s);
    QCOMPARE(gBD->Campo(u"Texto"_s, u"T"_s), kept);
    QCOMPARE(failureOf([] { gBD->RegistroInclui(u"Longo"_s, u"x"_s, u"T"_s); }), int(kErroValor));
}

void TstBdEdicao::refusedValueIsToldAndNothingStaysPending()
{
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    gBD->RegistroTroca(u"Texto"_s, u"novo"_s, u"t"_s);
    gBD->RegistroTroca(u"Longo"_s, u"x"_s, u"t"_s, kTrocaComoEsta, false); // silent: the edit stays pending
    QCOMPARE(gBD->ModoEdicao(u"T"_s), QVariant(kEdicaoEmCurso));
    gBD->RegistroTroca(u"Longo"_s, u"x"_s, u"t"_s);
    QCOMPARE(boxes.last(), (Caixa{u"O valor não é adequado para o campo."_s, u"t - "_s, Icone::Critico}));
    QCOMPARE(gBD->ModoEdicao(u"T"_s), QVariant(kEdicaoNenhuma));
    QCOMPARE(gBD->Campo(u"Texto"_s, u"T"_s), QVariant(u"velho"_s));
    gBD->RegistroTroca(u"Nada"_s, 1, u"t"_s); // the description of its own is never seen
    QCOMPARE(boxes.last(),
        (Caixa{u"O item não foi encontrado na coleção com o nome ou número pedido.\r\n"
               "O nome do campo não esta na tabela !!!"_s,
            u"t - "_s, Icone::Critico}));
}

void TstBdEdicao::adding()
{
    const BoxScript boxes;
    gBD->MoveParaFimDeArquivo(u"RS"_s);
    gBD->RegistroAdiciona(u"RS"_s);
    QCOMPARE(gBD->PosicaoRegistroAtual(), 0);
    QCOMPARE(gBD->ModoEdicao(u"RS"_s), QVariant(kEdicaoInclusao));
    gBD->RegistroTroca(u"CL_Nome"_s, u"d"_s, u"RS"_s);
    gBD->MoveParaComecoDeArquivo(u"RS"_s); // a browser's button: it stays pending
    gBD->RegistroTroca(u"CL_Prof"_s, u"z"_s, u"RS"_s);
    gBD->RegistroAtualiza(u"RS"_s);
    gBD->ReAtualizaRecordSet(u"RS"_s);
    QCOMPARE(gBD->PosicaoRegistroAtual(), 1); // no longer the one just written
    QCOMPARE(gBD->lista(u"RS"_s, u"CL_Nome"_s, u";"_s, u"CL_Prof"_s, u"-"_s), u"a-x;b-x;c-y;d-z"_s);
}

void TstBdEdicao::addingToNothingReadsItAgain()
{
    gBD->Records_Set(u"Select * From AL_Alunos"_s, u"vazio"_s);
    gBD->MoveProximoRegistro(u"RS"_s);
    QVERIFY(gBD->MarcaPosicao(u"RS"_s));
    gBD->RegistroAdiciona(u"vazio"_s);
    gBD->CancelaAdicao(u"vazio"_s);
    gBD->VoltaPosicao(u"RS"_s); // the mark was left alone
    QCOMPARE(gBD->PosicaoRegistroAtual(), 2);
    mRegistro->sql(u"INSERT INTO AL_Alunos VALUES (5, 'de outro')"_s);
    gBD->RegistroAdiciona(u"vazio"_s);
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"vazio"_s), 2);
    gBD->CancelaAdicao(u"vazio"_s);
    QCOMPARE(gBD->Campo(u"AL_Nome"_s, u"vazio"_s), QVariant(u"de outro"_s));
}

void TstBdEdicao::cancelsAnAddition_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("state");
    QTest::newRow("where it stood") << u"next"_s << u""_s << u"2/3 0 b"_s;
    QTest::newRow("after moves too") << u"next"_s << u"last"_s << u"2/3 0 b"_s;
    QTest::newRow("after a search that missed") << u"next"_s << u"find CL_Cod=9"_s << u"2/3 0 b"_s;
    QTest::newRow("begun off the records, no mark yet: the first") << u"end"_s << u""_s << u"1/3 0 a"_s;
}

void TstBdEdicao::cancelsAnAddition()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(QString, state);
    play(before);
    gBD->RegistroAdiciona(u"RS"_s);
    play(after);
    gBD->CancelaEdicao(u"RS"_s); // not this mode: nothing
    QCOMPARE(mSet->EditMode(), qint32(kEdicaoInclusao));
    gBD->CancelaAdicao(u"RS"_s);
    QCOMPARE(stateOf(*mSet), state);
    play(u"last"_s);
    gBD->CancelaAdicao(u"RS"_s); // nothing added
    QCOMPARE(stateOf(*mSet), u"3/3 0 c"_s);
}

void TstBdEdicao::cancelsAnEdit()
{
    play(u"next"_s);
    QVERIFY(gBD->MarcaPosicao(u"RS"_s));
    play(u"next; name z"_s);
    gBD->CancelaAdicao(u"RS"_s);
    QCOMPARE(stateOf(*mSet), u"3/3 1 z"_s);
    gBD->CancelaEdicao(u"RS"_s);
    QCOMPARE(stateOf(*mSet), u"2/3 0 b"_s); // at the mark
    QCOMPARE(inFile(), u"1a 2b 3c"_s);
}

void TstBdEdicao::updates_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("rows");
    QTest::newRow("an edit") << u"next; name z"_s << u"1a 2z 3c"_s;
    QTest::newRow("an added one") << u"add d"_s << u"1a 2b 3c 4d"_s;
    QTest::newRow("an added one from elsewhere") << u"add d; end"_s << u"1a 2b 3c 4d"_s;
    QTest::newRow("nothing pending") << u"next"_s << u"1a 2b 3c"_s;
    QTest::newRow("nothing pending, off the records") << u"end"_s << u"1a 2b 3c"_s;
    QTest::newRow("a deleted one") << u"remove"_s << u"2b 3c"_s;
}

void TstBdEdicao::updates()
{
    QFETCH(QString, steps);
    QFETCH(QString, rows);
    const BoxScript boxes;
    play(steps);
    gBD->RegistroAtualiza(u"RS"_s);
    QVERIFY(mSet->EditMode() != kEdicaoEmCurso && mSet->EditMode() != kEdicaoInclusao);
    QCOMPARE(inFile(), rows);
}

void TstBdEdicao::editedRowIsReadAgainFirst()
{
    play(u"name z; file UPDATE CL_Classes SET CL_Nome = 'o', CL_Prof = 'outro' WHERE CL_Cod = 1"_s);
    gBD->RegistroAtualiza(u"RS"_s);
    QCOMPARE(gBD->Campo(u"CL_Prof"_s, u"RS"_s), QVariant(u"outro"_s));
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s), QVariant(u"z"_s));
    QCOMPARE(inFile(), u"1z 2b 3c"_s);
}

void TstBdEdicao::rowThatIsGoneIsTold()
{
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    play(u"next; name z; file DELETE FROM CL_Classes WHERE CL_Cod = 2"_s);
    gBD->RegistroAtualiza(u"RS"_s);
    const QString gone = u"O registro não existe mais no banco de dados; nada foi gravado."_s;
    QCOMPARE(boxes.last(), (Caixa{gone, u"2 - "_s, Icone::Informacao})); // told by its slot
    QCOMPARE(stateOf(*mSet), u"2/3 0 b"_s);
    gBD->RegistroApaga(u"RS"_s, kAfetaAtual, false);
    QCOMPARE(boxes.last(), (Caixa{gone, u"RS - RegistroApaga"_s, Icone::Informacao}));
    QCOMPARE(inFile(), u"1a 3c"_s);
}

void TstBdEdicao::failedUpdateLeavesNothingPending()
{
    BoxScript boxes{Resposta::Ok};
    for (const bool warns : {false, true}) {
        gBD->RegistroAdiciona(u"RS"_s);
        gBD->RegistroTroca(u"CL_Cod"_s, 2, u"RS"_s, kTrocaNumero);
        gBD->RegistroAtualiza(u"RS"_s, warns);
        QCOMPARE(gBD->ModoEdicao(u"RS"_s), QVariant(warns ? kEdicaoNenhuma : kEdicaoInclusao));
    }
    QCOMPARE(boxes.last(),
        (Caixa{u"O valor repete uma chave ou fere uma regra da tabela; nada foi gravado."_s,
            u"RS - Registro Atualiza"_s, Icone::Informacao}));
    QCOMPARE(inFile(), u"1a 2b 3c"_s);
}

void TstBdEdicao::deletes_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<bool>("asks");
    QTest::addColumn<bool>("yes");
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("rows");
    QTest::newRow("unasked: stays on it") << u"next"_s << false << true << u"-1/2 4 3021"_s << u"1a 3c"_s;
    QTest::newRow("Yes: moves on") << u"next"_s << true << true << u"2/2 0 c"_s << u"1a 3c"_s;
    QTest::newRow("Yes on the last: moves off") << u"last"_s << true << true << u"EOF -3/2 0 3021"_s << u"1a 2b"_s;
    QTest::newRow("Yes on the only one") << u"filter CL_Cod=2"_s << true << true << u"BOF EOF -1/0 0 3021"_s
                                         << u"1a 3c"_s;
    QTest::newRow("No") << u"next"_s << true << false << u"2/3 0 b"_s << u"1a 2b 3c"_s;
    QTest::newRow("No keeps an edit") << u"name z"_s << true << false << u"1/3 1 z"_s << u"1a 2b 3c"_s;
    QTest::newRow("an added one is dropped") << u"next; add d"_s << false << true << u"2/3 0 b"_s << u"1a 2b 3c"_s;
}

void TstBdEdicao::deletes()
{
    QFETCH(QString, steps);
    QFETCH(bool, asks);
    QFETCH(bool, yes);
    QFETCH(QString, state);
    QFETCH(QString, rows);
    play(steps);
    {
        const auto answer = std::initializer_list<Resposta>{yes ? Resposta::Sim : Resposta::Nao};
        const auto boxes = asks ? std::make_unique<BoxScript>(answer) : std::make_unique<BoxScript>();
        gBD->RegistroApaga(u"RS"_s, kAfetaAtual, asks, yes ? QString() : u"Apaga?"_s);
        if (asks)
            QCOMPARE(boxes->last(),
                (Caixa{yes ? u"Deseja apagar o registro atual"_s : u"Apaga?"_s, u"Deletar Registro"_s, Icone::Nenhum,
                    Botoes::SimNao}));
    }
    QCOMPARE(stateOf(*mSet), state);
    QCOMPARE(inFile(), rows);
}

void TstBdEdicao::readsAgain()
{
    BoxScript boxes{Resposta::Ok};
    gBD->Filtro(u"CL_Cod>1"_s, u"RS"_s);
    play(u"last"_s);
    mRegistro->sql(u"INSERT INTO CL_Classes (CL_Nome) VALUES ('d')"_s);
    gBD->ReAtualizaRecordSet(u"RS"_s);
    QCOMPARE(stateOf(*mSet), u"1/3 0 b"_s); // at the first, the filter stays
    play(u"name z"_s);
    gBD->ReAtualizaRecordSet(u"RS"_s);
    QCOMPARE(boxes.last(),
        (Caixa{u"A operação não é permitida neste contexto."_s, u"RS - Registro reAtualizaRecordSet"_s,
            Icone::Informacao}));
    QCOMPARE(stateOf(*mSet), u"1/3 0 b"_s); // the report dropped the edit
}

void TstBdEdicao::modes_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QVariant>("mode");
    QTest::newRow("none") << u""_s << QVariant(0);
    QTest::newRow("edit") << u"name z"_s << QVariant(1);
    QTest::newRow("edit, read again for the batch") << u"name z; resync"_s << QVariant(0);
    QTest::newRow("added") << u"add"_s << QVariant(2);
    QTest::newRow("added, elsewhere") << u"add; first"_s << QVariant(2);
    QTest::newRow("added, off the records") << u"add; end"_s << QVariant();
    QTest::newRow("deleted") << u"remove"_s << QVariant(4);
    QTest::newRow("behind the last") << u"end"_s << QVariant();
    QTest::newRow("before the first") << u"previous"_s << QVariant();
}

void TstBdEdicao::modes()
{
    QFETCH(QString, steps);
    QFETCH(QVariant, mode);
    play(steps);
    QCOMPARE(gBD->ModoEdicao(u"RS"_s), mode);
}

void TstBdEdicao::savesAFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("bytes of all kinds") << QByteArray("\0\x1a\r\n\xff'", 6);
    QTest::newRow("64 KB") << QByteArray(65537, '\x80');
    QTest::newRow("empty") << QByteArray("");
}

void TstBdEdicao::savesAFile()
{
    QFETCH(QByteArray, bytes);
    BoxScript boxes{Resposta::Ok};
    const QString file = mRegistro->native() + u".fig"_s;
    escreve(file, bytes);
    gBD->RegistroSalvaBinario(u"Bytes"_s, barras(file), u"T"_s);
    gBD->RegistroAtualiza(u"T"_s);
    QFile::remove(file);
    gBD->RegistroSalvaBinario(u"Bytes"_s, barras(file), u"T"_s); // a file that is not there changes nothing
    QCOMPARE(boxes.last(), (Caixa{u"O arquivo não pôde ser lido."_s, u"T - "_s, Icone::Informacao}));
    gBD->ReAtualizaRecordSet(u"T"_s);
    QCOMPARE(gBD->Campo(u"Bytes"_s, u"T"_s), QVariant(bytes));
}

QTEST_MAIN(TstBdEdicao)
#include "tst_bd_edicao.moc"
