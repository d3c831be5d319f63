#include "catalogue/catalogo.h"

#include "catalogue/estado.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/fim.h"
#include "platform/sistema.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "vistas_gravadas.h"

#include <QDir>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstCatalogo : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void nameOfADiscipline_data();
    void nameOfADiscipline();
    void buildsTheMonths();
    void theEleventhMonthBringsTheBar();
    void theLocalCopyWins();
    void groupZeroUsesTheTemplate();
    void headOfAFile_data();
    void headOfAFile();
    void aFileThatGivesLessThanItAnnounces();
    void aNameWithoutTwoDigitsIsAFailure_data();
    void aNameWithoutTwoDigitsIsAFailure();
    void aLevelWithoutFilesEndsTheProgram();
    void objectiveOfADiscipline();
    void opensTheFirstFileOfMonthAndDiscipline();
    void aMonthWithoutTheDiscipline();

private:
    void writeBloco(const QString &nome, const QByteArray &bytes)
    {
        escreve(mDir->filePath(u"DB/F1/"_s + nome), bytes);
    }
    QString local() const { return nativePath(windowsDirectory()) + u"/QUOREL2001/DBBLOCOS/F1/"_s; }

    std::unique_ptr<QTemporaryDir> mDir;
};

void TstCatalogo::init()
{
    failOnWarnings();
    reiniciaCatalogue();
    gConfig = Quorel_Zeto();
    costuras().endProcess = [](int code) { throw FimDoPrograma{code}; };
    mDir = std::make_unique<QTemporaryDir>();
    QDir(local()).removeRecursively();
    gNivel = u"F1"_s;
    gConfig.SetaCFG(u"[zeto]\r\nDBBLOCOS="_s + barras(mDir->path()) + u"\\DB"_s);
}

void TstCatalogo::nameOfADiscipline_data()
{
    QTest::addColumn<QString>("codigo");
    QTest::addColumn<QString>("nome");
    QTest::newRow("letters") << u"AV"_s << u"Avaliação"_s;
    QTest::newRow("any case") << u"pO"_s << u"Português"_s;
    QTest::newRow("number") << u"3"_s << u"Desenvolvimento Sensório Motor"_s;
    QTest::newRow("last number") << u"10"_s << u"Português"_s;
    QTest::newRow("0") << u"0"_s << QString();
    QTest::newRow("11") << u"11"_s << QString();
    QTest::newRow("leading zero") << u"01"_s << QString();
    QTest::newRow("unknown letters") << u"XX"_s << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TstCatalogo::nameOfADiscipline()
{
    QFETCH(QString, codigo);
    QTEST(NomeDisciplina(codigo), "nome");
}

void TstCatalogo::buildsTheMonths()
{
    VistasGravadas vistas;
    writeBloco(u"0305poF1.EDB"_s, "<TM>Mar\xE7o</TM>");
    writeBloco(u"0205MAF1.edb"_s, "<OBJ>somar</OBJ><TM>Fevereiro</TM>");
    writeBloco(u"0299XXF1.edb"_s, "<OBJ>x</OBJ><TM>segundo</TM>");
    writeBloco(u"0305CIF1.txt"_s, "");
    MontaCatalogo();
    QCOMPARE(gArquivos.upperBound(), 2);
    const QString base = barras(mDir->path()) + u"\\DB\\F1\\"_s;
    QCOMPARE(gArquivos[0], (ArquivoRec{1, 2005, u"Matemática"_s, base + u"0205MAF1.edb"_s, {}, u"somar"_s}));
    QCOMPARE(gArquivos[1], (ArquivoRec{1, 2099, {}, base + u"0299XXF1.edb"_s, {}, u"x"_s}));
    QCOMPARE(gArquivos[2], (ArquivoRec{2, 2005, u"Português"_s, base + u"0305poF1.EDB"_s, {}, {}}));
    QCOMPARE(vistas.log,
        (QStringList{u"month 1 at 15,450"_s, u"showMonth 1"_s, u"caption 1 Fevereiro"_s, u"showMonth 1"_s,
            u"caption 1 segundo"_s, u"month 2 at 15,900"_s, u"showMonth 2"_s, u"caption 2 Março"_s}));
}

void TstCatalogo::theEleventhMonthBringsTheBar()
{
    VistasGravadas vistas;
    for (int mes = 1; mes <= 12; ++mes)
        writeBloco(u"%1"_s.arg(mes, 2, 10, QChar(u'0')) + u"05MAF1.edb"_s, "");
    MontaCatalogo();
    QCOMPARE(vistas.log.filter(u"maximum"_s), (QStringList{u"maximum 2700"_s, u"maximum 3150"_s}));
    QCOMPARE(vistas.log.indexOf(u"maximum 2700"_s), vistas.log.indexOf(u"month 11 at 15,4950"_s) + 1);
}

void TstCatalogo::theLocalCopyWins()
{
    VistasGravadas vistas;
    writeBloco(u"0205MAF1.edb"_s, "<OBJ>configurado</OBJ>");
    escreve(local() + u"0205MAF1.edb"_s, "<OBJ>local</OBJ>");
    escreve(local() + u"0305MAF1.edb"_s, "only the configured directory is listed");
    MontaCatalogo();
    QCOMPARE(gArquivos.upperBound(), 0);
    QCOMPARE(gArquivos[0].Objetivo, u"local"_s);
    QDir(mDir->filePath(u"DB"_s)).removeRecursively();
    MontaCatalogo();
    QCOMPARE(gArquivos.upperBound(), 1);
}

void TstCatalogo::groupZeroUsesTheTemplate()
{
    VistasGravadas vistas;
    writeBloco(u"0005MAF1.edb"_s, "<TM>zero</TM>");
    MontaCatalogo();
    QCOMPARE(gArquivos[0].Mes, qint16(0));
    QCOMPARE(vistas.log, (QStringList{u"showMonth 0"_s, u"caption 0 zero"_s}));
}

void TstCatalogo::headOfAFile_data()
{
    QTest::addColumn<QString>("nome");
    QTest::addColumn<QString>("nivel");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("ano");
    QTest::addColumn<QString>("disciplina");
    QTest::addColumn<QString>("objetivo");
    QTest::addColumn<QString>("tema");
    const QByteArray longe(300000, ' ');
    QTest::newRow("far behind") << u"0105CIF1.edb"_s << u"F1"_s << longe + "<OBJ>o</OBJ>" + longe + "<TM>t</TM>" << 2005
                                << u"Ciências"_s << u"o"_s << u"t"_s;
    QTest::newRow("an end marker before its begin does not count")
        << u"0105CIF1.edb"_s << u"F1"_s << "</OBJ></TM>" + longe + "<TM>t</TM><OBJ>o</OBJ>" << 2005 << u"Ciências"_s
        << u"o"_s << u"t"_s;
    QTest::newRow("never closed") << u"0105CIF1.edb"_s << u"F1"_s << QByteArray("<OBJ>o<TM>t</TM>") << 2005
                                  << u"Ciências"_s << QString() << u"t"_s;
    QTest::newRow("empty file") << u"0105CIF1.edb"_s << u"F1"_s << QByteArray() << 2005 << u"Ciências"_s << QString()
                                << QString();
    QTest::newRow("kept: a level in lower case finds no discipline")
        << u"0105CIF1.edb"_s << u"f1"_s << QByteArray() << 2005 << QString() << QString() << QString();
    QTest::newRow("another level in the name")
        << u"0105CIF2.edb"_s << u"F1"_s << QByteArray() << 2005 << QString() << QString() << QString();
    QTest::newRow("short name") << u"01.edb"_s << u"F1"_s << QByteArray() << 20 << QString() << QString() << QString();
}

void TstCatalogo::headOfAFile()
{
    QFETCH(QString, nome);
    QFETCH(QString, nivel);
    QFETCH(QByteArray, bytes);
    escreve(mDir->filePath(nome), bytes);
    const CabecaBloco cabeca = leCabeca(nome, nivel, barras(mDir->filePath(nome)));
    QCOMPARE(cabeca.grupo, 1);
    QTEST(int(cabeca.ano), "ano");
    QTEST(cabeca.disciplina, "disciplina");
    QTEST(cabeca.objetivo, "objetivo");
    QTEST(cabeca.tema, "tema");
}

void TstCatalogo::aFileThatGivesLessThanItAnnounces()
{
    const QString file = u"/sys/devices/system/cpu/online"_s; // one page long by its size, a few bytes when read
    QVERIFY(QFileInfo(file).size() > 100);
    const CabecaBloco cabeca = leCabeca(u"0105CIF1.edb"_s, u"F1"_s, barras(file));
    QCOMPARE(cabeca.disciplina, u"Ciências"_s);
    QCOMPARE(cabeca.tema, QString());
}

void TstCatalogo::aNameWithoutTwoDigitsIsAFailure_data()
{
    QTest::addColumn<QString>("nome");
    QTest::addColumn<int>("numero");
    QTest::newRow("letters") << u"abril.edb"_s << int(kFalhaTipo);
    QTest::newRow("one digit") << u"1.edb"_s << int(kFalhaTipo);
    QTest::newRow("a semicolon cuts the name in two") << u"0105;x.edb"_s << int(kFalhaTipo);
    QTest::newRow("a year beyond 16 bits") << u"01999999.edb"_s << int(kFalhaEstouro);
}

void TstCatalogo::aNameWithoutTwoDigitsIsAFailure()
{
    QFETCH(QString, nome);
    VistasGravadas vistas;
    writeBloco(nome, "");
    try {
        MontaCatalogo();
        QFAIL("no failure");
    } catch (const ErroExecucao &falha) {
        QTEST(falha.numero(), "numero");
    }
}

void TstCatalogo::aLevelWithoutFilesEndsTheProgram()
{
    VistasGravadas vistas;
    gNivel = u"I2"_s;
    BoxScript boxes{Resposta::Ok};
    QVERIFY_EXCEPTION_THROWN(MontaCatalogo(), FimDoPrograma);
    const QString titulo = nativePath(windowsDirectory() + u"\\QUOREL2001\\DBBLOCOS\\I2\\*.edb"_s);
    QCOMPARE(boxes.last(),
        (Caixa{
            u"Diretório não encontrado\nExecute o programa de Instalação"_s, titulo, Icone::Informacao, Botoes::Ok}));
    QCOMPARE(vistas.log, QStringList());
}

void TstCatalogo::objectiveOfADiscipline()
{
    VistasGravadas vistas;
    writeBloco(u"0205MAF1.edb"_s, "<OBJ>somar</OBJ>");
    writeBloco(u"0206MAF1.edb"_s, "<OBJ>outro</OBJ>");
    writeBloco(u"0305MAF1.edb"_s, "<OBJ>dividir</OBJ>");
    MontaCatalogo();
    QCOMPARE(ObjetivoDisciplina(u"MATEMÁTICA"_s), u"MATEMÁTICA - somar"_s);
    vistas.mes = u"2"_s;
    QCOMPARE(ObjetivoDisciplina(u"Matemática"_s), u"Matemática - dividir"_s);
    QCOMPARE(ObjetivoDisciplina(u"Ciências"_s), QString());
    vistas.mes = u"x"_s;
    QCOMPARE(ObjetivoDisciplina(u"Matemática"_s), QString());
}

void TstCatalogo::opensTheFirstFileOfMonthAndDiscipline()
{
    VistasGravadas vistas;
    writeBloco(u"0205MAF1.edb"_s, "[ROT<1>]\r\nNomeRot =primeiro\r\n");
    writeBloco(u"0206MAF1.edb"_s, "[ROT<1>]\r\nNomeRot =segundo\r\n");
    MontaCatalogo();
    vistas.log.clear();
    QByteArray textAtShow;
    vistas.onShow = [&] { textAtShow = gTextoDB; };
    gDisciplina = 2; // the title follows it, not the argument
    AbreDisciplina(1, 9);
    QCOMPARE(vistas.log,
        (QStringList{u"hidePrincip"_s, u"showBlocos"_s, u"manual 9"_s, u"titulo Roteiros de Ciências"_s, u"hideAll"_s,
            u"tag 1 primeiro - "_s, u"show 1"_s}));
    QCOMPARE(textAtShow, gTextoDB);
    QCOMPARE(gRoteiros[1].Nome, u"primeiro"_s);
}

void TstCatalogo::aMonthWithoutTheDiscipline()
{
    VistasGravadas vistas;
    QVERIFY_EXCEPTION_THROWN(AbreDisciplina(1, 9), ErroExecucao);
    writeBloco(u"0205XXF1.edb"_s, "");
    MontaCatalogo();
    for (const qint16 disciplina : {qint16(9), qint16(0), qint16(11)}) {
        vistas.log.clear();
        gRoteiros.dimension(1);
        gRoteiros.edit(1).Nome = u"antigo"_s;
        AbreDisciplina(1, disciplina);
        QCOMPARE(vistas.log.first(4),
            (QStringList{u"hidePrincip"_s, u"showBlocos"_s, u"titulo ROTEIROS NÃO DISPONÍVEIS"_s, u"hide 1"_s}));
        QCOMPARE(vistas.log.last(2), (QStringList{u"hide 48"_s, u"keepBlocosVisible"_s}));
        QCOMPARE(gRoteiros[1].Nome, u"antigo"_s);
    }
}

QTEST_MAIN(TstCatalogo)
#include "tst_catalogo.moc"
