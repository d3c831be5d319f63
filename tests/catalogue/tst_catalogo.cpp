#include "catalogue/catalogo.h"

#include "catalogue/estado.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/fim.h"
#include "platform/sistema.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"
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
    void builds_data();
    void builds();
    void theEleventhMonthBringsTheBar();
    void theLocalCopyWins();
    void aFileThatGivesLessThanItAnnounces();
    void aLevelWithoutFilesEndsTheProgram();
    void objectiveOfADiscipline();
    void opensTheFirstFileOfMonthAndDiscipline();
    void aMonthWithoutTheDiscipline();

private:
    void writeBloco(const QString &nome, const QByteArray &bytes = {})
    {
        escreve(mDir->filePath(u"DB/F1/"_s + nome), bytes);
    }
    QString local() const { return nativePath(windowsDirectory()) + u"/QUOREL2001/DBBLOCOS/F1/"_s; }

    std::unique_ptr<QTemporaryDir> mDir;
    std::unique_ptr<VistasGravadas> mVistas;
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
    mVistas.reset(); // before the next ones are in use
    mVistas = std::make_unique<VistasGravadas>();
}

void TstCatalogo::nameOfADiscipline_data()
{
    rows<QString>({
        {"AV", "Avaliação"},
        {"pO", "Português"}, // in any case
        {"3", "Desenvolvimento Sensório Motor"},
        {"10", "Português"},
        {"0", ""},
        {"11", ""},
        {"01", ""},
        {"XX", ""},
        {"", ""},
    });
}

void TstCatalogo::nameOfADiscipline()
{
    const auto [nome] = row<QString>();
    QCOMPARE(NomeDisciplina(rowName()), nome);
}

void TstCatalogo::builds_data()
{
    const QByteArray far(300000, ' ');
    const QString one = u"; month 1 at 15,450; showMonth 1; caption 1 "_s;
    rows<QString, QList<std::pair<QString, QByteArray>>, QString>({
        // files in the catalogue ("month year discipline objective"), calls; or the failure alone
        {"months in order of their names, other files passed over", "F1",
            {{"0305poF1.EDB", "<TM>Mar\xE7o</TM>"}, {"0205MAF1.edb", "<OBJ>somar</OBJ><TM>Fevereiro</TM>"},
                {"0299XXF1.edb", "<OBJ>x</OBJ><TM>segundo</TM>"}, {"0305CIF1.txt", ""}},
            "1 2005 Matemática somar; 1 2099  x; 2 2005 Português " + one
                + "Fevereiro; showMonth 1; caption 1 segundo; "
                  "month 2 at 15,900; showMonth 2; caption 2 Março"},
        {"group 0 uses the template", "F1", {{"0005MAF1.edb", "<TM>zero</TM>"}},
            "0 2005 Matemática ; showMonth 0; caption 0 zero"},
        {"texts far behind", "F1", {{"0105CIF1.edb", far + "<OBJ>o</OBJ>" + far + "<TM>t</TM>"}},
            "1 2005 Ciências o" + one + 't'},
        {"an end marker before its begin does not count", "F1",
            {{"0105CIF1.edb", "</OBJ></TM>" + far + "<TM>t</TM><OBJ>o</OBJ>"}}, "1 2005 Ciências o" + one + 't'},
        {"one never closed", "F1", {{"0105CIF1.edb", "<OBJ>o<TM>t</TM>"}}, "1 2005 Ciências " + one + 't'},
        {"an empty file", "F1", {{"0105CIF1.edb", ""}}, "1 2005 Ciências " + one},
        {"kept: a level in lower case finds no discipline", "f1", {{"0105CIF1.edb", ""}}, "1 2005  " + one},
        {"another level in the name", "F1", {{"0105CIF2.edb", ""}}, "1 2005  " + one},
        {"a short name", "F1", {{"01.edb", ""}}, "1 20  " + one},
        {"a name of letters", "F1", {{"abril.edb", ""}}, "fails 13, names abril.edb"},
        {"a name of one digit", "F1", {{"1.edb", ""}}, "fails 13, names 1.edb"},
        {"a semicolon cuts a name in two", "F1", {{"0105;x.edb", ""}}, "fails 13, names x.edb"},
        {"a year beyond 16 bits", "F1", {{"01999999.edb", ""}}, "fails 6, names 01999999.edb"},
    });
}

void TstCatalogo::builds()
{
    const auto [nivel, files, expected] = row<QString, QList<std::pair<QString, QByteArray>>, QString>();
    gNivel = nivel;
    for (const auto &[name, bytes] : files)
        writeBloco(name, bytes);
    QString outcome;
    try {
        MontaCatalogo();
        for (int i = 0; i <= gArquivos.upperBound(); ++i) {
            const ArquivoRec &a = gArquivos[i];
            outcome += u"%1 %2 %3 %4; "_s.arg(QString::number(a.Mes), QString::number(a.Ano), a.Disciplina, a.Objetivo);
        }
        outcome += mVistas->calls();
    } catch (const ErroExecucao &falha) {
        const QString named = QDir(falha.descricao().section(u"roteiros "_s, 1).section(u" não"_s, 0, 0)).dirName();
        outcome = u"fails %1, names %2"_s.arg(QString::number(falha.numero()), named);
    }
    QCOMPARE(outcome, expected);
}

void TstCatalogo::theEleventhMonthBringsTheBar()
{
    for (int mes = 1; mes <= 12; ++mes)
        writeBloco(u"%1"_s.arg(mes, 2, 10, QChar(u'0')) + u"05MAF1.edb"_s);
    MontaCatalogo();
    QCOMPARE(mVistas->log.filter(u"maximum"_s), (QStringList{u"maximum 2700"_s, u"maximum 3150"_s}));
    QCOMPARE(mVistas->log.indexOf(u"maximum 2700"_s), mVistas->log.indexOf(u"month 11 at 15,4950"_s) + 1);
}

void TstCatalogo::theLocalCopyWins()
{
    writeBloco(u"0205MAF1.edb"_s, "<OBJ>configurado</OBJ>");
    escreve(local() + u"0205MAF1.edb"_s, "<OBJ>local</OBJ>");
    escreve(local() + u"0305MAF1.edb"_s, "only the configured directory is listed");
    MontaCatalogo();
    QCOMPARE(gArquivos.upperBound(), 0);
    QCOMPARE(gArquivos[0].Objetivo, u"local"_s);
    QCOMPARE(gArquivos[0].Arquivo, barras(local() + u"0205MAF1.edb"_s));
    QDir(mDir->filePath(u"DB"_s)).removeRecursively();
    MontaCatalogo();
    QCOMPARE(gArquivos.upperBound(), 1);
}

void TstCatalogo::aFileThatGivesLessThanItAnnounces()
{
    const QString file = u"/sys/devices/system/cpu/online"_s; // one page long by its size, a few bytes when read
    QVERIFY(QFileInfo(file).size() > 100);
    const CabecaBloco cabeca = leCabeca(u"0105CIF1.edb"_s, u"F1"_s, barras(file));
    QCOMPARE(cabeca.disciplina, u"Ciências"_s);
    QCOMPARE(cabeca.tema, QString());
}

void TstCatalogo::aLevelWithoutFilesEndsTheProgram()
{
    gNivel = u"I2"_s;
    BoxScript boxes{Resposta::Ok};
    QVERIFY_EXCEPTION_THROWN(MontaCatalogo(), FimDoPrograma);
    const QString titulo = nativePath(windowsDirectory() + u"\\QUOREL2001\\DBBLOCOS\\I2\\*.edb"_s);
    const Caixa expected{u"Diretório não encontrado\nExecute o programa de Instalação"_s, titulo, Icone::Informacao};
    QCOMPARE(boxes.last(), expected);
    QCOMPARE(mVistas->calls(), u""_s);
}

void TstCatalogo::objectiveOfADiscipline()
{
    writeBloco(u"0205MAF1.edb"_s, "<OBJ>somar</OBJ>");
    writeBloco(u"0206MAF1.edb"_s, "<OBJ>outro</OBJ>");
    writeBloco(u"0305MAF1.edb"_s, "<OBJ>dividir</OBJ>");
    MontaCatalogo();
    QCOMPARE(ObjetivoDisciplina(u"MATEMÁTICA"_s), u"MATEMÁTICA - somar"_s);
    mVistas->mes = u"2"_s;
    QCOMPARE(ObjetivoDisciplina(u"Matemática"_s), u"Matemática - dividir"_s);
    QCOMPARE(ObjetivoDisciplina(u"Ciências"_s), QString());
    mVistas->mes = u"x"_s;
    QCOMPARE(ObjetivoDisciplina(u"Matemática"_s), QString());
}

void TstCatalogo::opensTheFirstFileOfMonthAndDiscipline()
{
    writeBloco(u"0205MAF1.edb"_s, "[ROT<1>]\r\nNomeRot =primeiro\r\n");
    writeBloco(u"0206MAF1.edb"_s, "[ROT<1>]\r\nNomeRot =segundo\r\n");
    MontaCatalogo();
    mVistas->log.clear();
    QByteArray textAtShow;
    mVistas->onShow = [&] { textAtShow = gTextoDB; };
    gDisciplina = 2; // the title follows it, not the argument
    AbreDisciplina(1, 9);
    QCOMPARE(mVistas->calls(),
        u"hidePrincip; showBlocos; manual 9; titulo Roteiros de Ciências; hideAll; tag 1 primeiro - ; show 1"_s);
    QCOMPARE(textAtShow, gTextoDB);
    QCOMPARE(gRoteiros[1].Nome, u"primeiro"_s);
}

void TstCatalogo::aMonthWithoutTheDiscipline()
{
    QVERIFY_EXCEPTION_THROWN(AbreDisciplina(1, 9), ErroExecucao);
    writeBloco(u"0205XXF1.edb"_s);
    MontaCatalogo();
    for (const qint16 disciplina : {qint16(9), qint16(0), qint16(11)}) {
        mVistas->log.clear();
        gRoteiros.dimension(1);
        gRoteiros.edit(1).Nome = u"antigo"_s;
        AbreDisciplina(1, disciplina);
        const QString calls = mVistas->calls();
        QVERIFY(calls.startsWith(u"hidePrincip; showBlocos; titulo ROTEIROS NÃO DISPONÍVEIS; hide 1; hide 2; "_s));
        QVERIFY(calls.endsWith(u"; hide 48; keepBlocosVisible"_s));
        QCOMPARE(gRoteiros[1].Nome, u"antigo"_s);
    }
}

QTEST_MAIN(TstCatalogo)
#include "tst_catalogo.moc"
