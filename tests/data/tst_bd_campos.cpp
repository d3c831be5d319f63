#include "apoio.h"

#include "support/suporte.h"
#include "support/table.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

static const QString kNoField = u"O item não foi encontrado na coleção com o nome ou número pedido./%1"
                                "O nome do campo não esta na tabela !!!"_s;

/// Fields through BD: kinds of values, what a search gives, pictures and files, copies from table to table.
class TstBdCampos final : public TesteBD
{
    Q_OBJECT
public:
    TstBdCampos()
        : TesteBD(kTresClasses
            + u"CREATE TABLE T (Id INTEGER PRIMARY KEY AUTOINCREMENT, Longo INTEGER, Duplo REAL, Logico BOOLEAN,"
              "Texto VARCHAR, Bytes BLOB); INSERT INTO T (Longo, Texto, Logico) VALUES (7, 'velho', 1)"_s)
    { }

private slots:
    void init();
    void assigns_data();
    void assigns();
    void includes();
    void silentFailureKeepsWhatIsPending();
    void deletesNothingAgainstTheAnswer();
    void fieldByBookmark();
    void picture_data();
    void picture();
    void savesAFile();
    void copiesARecord();
    void copiesATable_data();
    void copiesATable();
    void copyIsTold();
};

void TstBdCampos::init()
{
    TesteBD::init();
    gBD->Records_Set(u"Select * From T"_s, u"T"_s);
}

void TstBdCampos::assigns_data()
{
    const QString text = u"Texto"_s, number = u"Duplo"_s;
    rows<QVariant, QVariant, qint32, QVariant>({
        {"as it is", text, u"x"_s, kTrocaComoEsta, u"x"_s},
        {"an empty text, not Null", text, u""_s, kTrocaComoEsta, u""_s},
        {"nothing is an empty text", text, {}, kTrocaComoEsta, u""_s},
        {"empty, whatever the kind", text, u""_s, kTrocaNumero, u""_s},
        {"empty, even of no kind", text, u""_s, 9, u""_s},
        {"a kind that is none writes nothing", text, u"x"_s, 9, u"velho"_s},
        {"as text", text, 12.5, kTrocaTexto, u"12.5"_s},
        {"a number 0 has a length", u"Longo"_s, 0, kTrocaNumero, 0},
        {"as number", number, u"9999 e mais"_s, kTrocaNumero, 9999.0},
        {"what begins with no number is 0", number, u"x9"_s, kTrocaNumero, 0.0},
        {"a number into a long", u"Longo"_s, 9999, kTrocaNumero, 9999},
        {"as boolean", u"Logico"_s, u"0"_s, kTrocaLogico, false},
        {"by number of the field", 4, u"x"_s, kTrocaComoEsta, u"x"_s},
    });
}

void TstBdCampos::assigns()
{
    const auto [field, value, kind, kept] = row<QVariant, QVariant, qint32, QVariant>();
    gBD->RegistroTroca(field, value, u"t"_s, kind);
    QCOMPARE(gBD->Campo(field, u"T"_s), kept);
    gBD->RegistroAtualiza(u"T"_s);
    gBD->ReAtualizaRecordSet(u"T"_s);
    QCOMPARE(gBD->Campo(field, u"T"_s), kept);
    QCOMPARE(gBD->Campo(field, u"T"_s).typeId(), kept.typeId());
}

void TstBdCampos::includes()
{
    const auto included = [](const QVariant &value) {
        gBD->RegistroInclui(u"Texto"_s, value, u"T"_s);
        return gBD->Campo(u"Texto"_s, u"T"_s);
    };
    QCOMPARE(included(u"x"_s), QVariant(u"x"_s));
    QCOMPARE(included(3), QVariant(u"3"_s));
    QCOMPARE(included({}), QVariant(u"3"_s)); // nothing changes nothing
    QCOMPARE(included(u""_s), QVariant(u""_s));
    QCOMPARE(failureOf([] { gBD->RegistroInclui(u"Longo"_s, u"x"_s, u"T"_s); }), int(kErroValor));
}

void TstBdCampos::silentFailureKeepsWhatIsPending()
{
    gBD->RegistroTroca(u"Texto"_s, u"novo"_s, u"t"_s);
    gBD->RegistroTroca(u"Longo"_s, u"x"_s, u"t"_s, kTrocaComoEsta, false);
    QCOMPARE(gBD->ModoEdicao(u"T"_s), QVariant(kEdicaoEmCurso));
    play(u"RegistroAdiciona; RegistroTroca CL_Cod=2"_s);
    gBD->RegistroAtualiza(u"RS"_s, false);
    QCOMPARE(gBD->ModoEdicao(u"RS"_s), QVariant(kEdicaoInclusao));
}

void TstBdCampos::deletesNothingAgainstTheAnswer()
{
    play(u"name z"_s); // an edit stays too
    mSim = Resposta::Nao;
    gBD->RegistroApaga(u"RS"_s, kAfetaAtual, true, u"Apaga?"_s);
    QCOMPARE(told(), u"? Deletar Registro: Apaga?"_s);
    QCOMPARE(state(), u"1/3 1 z"_s);
    QCOMPARE(inFile(), u"1a 2b 3c"_s);
}

void TstBdCampos::fieldByBookmark()
{
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s, 3), QVariant(u"c"_s));
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s, u""_s), QVariant(u"c"_s)); // none; it stays there
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s, u"2"_s), QVariant(u"b"_s));
    QCOMPARE(gBD->Campo(u"CL_Nome"_s, u"RS"_s, 77), QVariant(u"a"_s));
    QVERIFY(!gBD->Campo({}, u"RS"_s).isValid());
    QVERIFY(!gBD->Campo(9, u"RS"_s).isValid());
    QCOMPARE(told(), u"! RS - Campo: "_s + kNoField.arg(u"Campo (9)/"_s));
    play(u"end"_s);
    QCOMPARE(gBD->Campo(u"Nada"_s, u"RS"_s, 2), QVariant(u""_s)); // neither is even looked at
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
    rows<QByteArray, int, QString>({
        // with a width of 0 the control is left alone
        {"within a kilobyte", bitmap(5), 5, ""},
        {"several kilobytes", bitmap(900), 900, ""},
        {"empty", QByteArray(""), 0, ""},
        {"Null", QByteArray(), 0, ""},
        {"no picture", QByteArray("nada"), 0,
            u"! T - Campo: "_s + ErroExecucao(kFalhaFigura).descricao() + u"/Campo (Bytes)"_s},
    });
}

void TstBdCampos::picture()
{
    const auto [bytes, width, box] = row<QByteArray, int, QString>();
    const QString literal = bytes.isNull() ? u"NULL"_s : u"x'%1'"_s.arg(QString(bytes.toHex()));
    mRegistro->sql(u"UPDATE T SET Bytes = "_s + literal);
    gBD->ReAtualizaRecordSet(u"T"_s);
    QLabel label;
    QDir::setCurrent(QDir::tempPath());
    gBD->CampoImagem(label, u"Bytes"_s, u"T"_s);
    QCOMPARE(label.pixmap().width(), width);
    QVERIFY(!QFile::exists(u"temppic.bmp"_s));
    QCOMPARE(told(), box);
}

void TstBdCampos::savesAFile()
{
    const QString file = mRegistro->native() + u".fig"_s;
    for (const QByteArray &bytes : {QByteArray("\0\x1a\r\n\xff'", 6), QByteArray(65537, '\x80'), QByteArray("")}) {
        escreve(file, bytes);
        gBD->RegistroSalvaBinario(u"Bytes"_s, barras(file), u"T"_s);
        gBD->RegistroAtualiza(u"T"_s);
        QFile::remove(file);
        gBD->RegistroSalvaBinario(u"Bytes"_s, barras(file), u"T"_s); // a file that is not there changes nothing
        QCOMPARE(told(), u"i T - : O arquivo não pôde ser lido."_s);
        gBD->ReAtualizaRecordSet(u"T"_s);
        QCOMPARE(gBD->Campo(u"Bytes"_s, u"T"_s), QVariant(bytes));
    }
}

static const QString kTables =
    u"CREATE TABLE De (Id INTEGER PRIMARY KEY AUTOINCREMENT, N INTEGER, B BOOLEAN, T VARCHAR,"
    "M TEXT, D DATETIME, R REAL);"
    "CREATE TABLE Para (Id INTEGER PRIMARY KEY AUTOINCREMENT, N INTEGER, B BOOLEAN,"
    "T VARCHAR, M TEXT, D DATETIME, R REAL);"
    "INSERT INTO De (N, B, T, M, D, R) VALUES (5, 1, 'um', 'longo', '2026-11-24 10:00:00', 1.5),"
    "(NULL, 0, NULL, NULL, NULL, NULL), (7, 1, 'três', '', NULL, NULL)"_s;
static const QString kCopied = u"SELECT Id, N, B, T, M, D, R FROM Para"_s;

void TstBdCampos::copiesARecord()
{
    mRegistro->sql(kTables);
    gBD->Records_Set(u"Select * From De"_s, u"de"_s);
    gBD->Records_Set(u"Select * From Para"_s, u"para"_s);
    gBD->CopiaRegistro(u"de"_s, u"para"_s);
    gBD->MoveProximoRegistro(u"de"_s);
    gBD->CopiaRegistro(u"de"_s, u"para"_s); // a Null is an empty text, and 0 as a number
    QCOMPARE(gBD->PosicaoRegistroAtual(u"para"_s), 2);
    // numbered by the destination; neither dates nor doubles are copied
    QCOMPARE(inFile(kCopied), u"1|5|1|um|longo|NULL|NULL\n2|0|0|||NULL|NULL"_s);
}

void TstBdCampos::copiesATable_data()
{
    const QString all = u"Select * From De"_s;
    const QString copied = u"1|5|1|um|longo|NULL|NULL\n2|0|0|||NULL|NULL\n3|7|1|três||NULL|NULL"_s;
    rows<QString, int, bool, QString>({
        // records to skip; whether the first field is left out
        {"all", all, 0, false, copied},
        {"without the first field", all, 0, true, copied},
        {"from the current one on", all, 2, false, "1|7|1|três||NULL|NULL"},
        {"from behind the end", all, 3, false, ""},
        {"fields go by number, numbers skipped", "Select Id, Id * 10 as N, B, T From De", 0, true,
            "1|NULL|1|um|NULL|NULL|NULL\n2|NULL|0||NULL|NULL|NULL\n3|NULL|1|três|NULL|NULL|NULL"},
    });
}

void TstBdCampos::copiesATable()
{
    const auto [source, from, skipsFirst, rows] = row<QString, int, bool, QString>();
    mRegistro->sql(kTables);
    gBD->Records_Set(source, u"de"_s);
    gBD->Records_Set(u"Select * From Para"_s, u"para"_s);
    for (int i = 0; i < from; ++i)
        gBD->MoveProximoRegistro(u"de"_s);
    gBD->CopiaTabela(u"de"_s, u"para"_s, skipsFirst);
    QVERIFY(gBD->FimDeArquivo(u"de"_s));
    QCOMPARE(inFile(kCopied), rows);
}

void TstBdCampos::copyIsTold()
{
    mRegistro->sql(kTables + u"; UPDATE De SET T = 'x'"_s);
    gBD->Records_Set(u"Select B, T, N From De"_s, u"de"_s); // a text where a number is wanted
    gBD->Records_Set(u"Select N, N as X, R From Para"_s, u"para"_s); // without its key
    gBD->CopiaRegistro(u"de"_s, u"para"_s);
    QCOMPARE(told(), u"i de - CopiaRegistro: O conjunto de registros só pode ser lido."_s);
    gBD->Records_Set(u"Select Id, N From Para"_s, u"para"_s);
    gBD->CopiaTabela(u"de"_s, u"para"_s);
    QCOMPARE(told(), u"! de - CopiaTabela: O valor não é adequado para o campo."_s);
    QCOMPARE(gBD->ModoEdicao(u"para"_s), QVariant(kEdicaoInclusao)); // what is dropped is the source's change
    QCOMPARE(inFile(kCopied), u""_s);
}

QTEST_MAIN(TstBdCampos)
#include "tst_bd_campos.moc"
