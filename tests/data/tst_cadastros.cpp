#include "apoio.h"

#include "data/cadastros.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Finding, opening and completing the register at the start, and moving one off read-only media.
class TstCadastros final : public TesteBD
{
    Q_OBJECT
public:
    TstCadastros() : TesteBD({}, {}) { }

private slots:
    void init();
    void findsTheRegister_data();
    void findsTheRegister();
    void generics_data();
    void generics();
    void secondStartTouchesNothing();
    void pupilsOfTheClass_data();
    void pupilsOfTheClass();
    void tablesOfAllWindows();
    void copies_data();
    void copies();
    void copyThatFailsIsTold();

private:
    QString folder(const QString &name) const { return mHome->filePath(name); }
    QString file(const QString &name) const { return folder(name) + u"/Cadastros.mdb"_s; }
    void configure(const QString &dirWin = {}) const;
    /// A register in a folder, with the generic rows and a class of the folder's name.
    void make(const QString &name, const QString &rows = {}) const;
    static QString classes() { return gBD->lista(u"rsClasses"_s, u"CL_Nome"_s, u","_s); }

    std::unique_ptr<QTemporaryDir> mHome;
};

static const QString kGenerics = u"INSERT INTO CL_Classes (CL_Cod, CL_Nome) VALUES (9999, 'Genérica');"
                                 "INSERT INTO AL_Alunos VALUES (9999, 'Genérico');"
                                 "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (9999, 9999);"_s;

void TstCadastros::init()
{
    TesteBD::init();
    reiniciaStartup();
    reiniciaData();
    costuras().now = [] { return QDateTime({2026, 11, 24}, {10, 30}); };
    mHome = std::make_unique<QTemporaryDir>();
    QDir(mHome->path()).mkdir(u"win"_s);
    qputenv("QUOREL_WINDIR", folder(u"win"_s).toUtf8());
    gClasse = 0;
    configure();
}

void TstCadastros::configure(const QString &dirWin) const
{
    gConfig.SetaCFG(u"ZETO_CAD="_s + barras(folder(u"cad"_s)) + u"\r\nDIRWIN="_s + dirWin + u"\r\n"_s);
}

void TstCadastros::make(const QString &name, const QString &rows) const
{
    escreve(file(name), {});
    makeRegister(file(name));
    const QString named = u"INSERT INTO CL_Classes (CL_Cod, CL_Nome) VALUES (1, '%1');"_s.arg(name);
    plainSql(file(name), rows.isNull() ? named + kGenerics : rows);
}

void TstCadastros::findsTheRegister_data()
{
    const QString notFound = u"i %1: Arquivo de Cadastros dos alunos não foi localizado"_s;
    const QString noConnection = u"Não há conexão aberta com o banco de dados. Cadastro: %2. Configuração: %3."_s;
    rows<QString, QString, QString, QString>({
        {"configured", "cad", "", "cad,Genérica", ""},
        {"configured before the Windows directory", "cad win", "", "cad,Genérica", ""},
        {"in the Windows directory", "win", "", "Genérica,win", ""},
        {"configured, with DIRWIN", "cad win", "\\x", "cad,Genérica", ""},
        {"none", "", "", "", notFound},
        {"kept: with DIRWIN the Windows directory is not looked in", "win", "\\x", "",
            "rsClasses: Select * From CL_Classes/3709\t" + noConnection + "\ni AbreBDAlunos: 3709 " + noConnection
                + "/O programa segue sem o cadastro, e as respostas esperam nesta máquina. Quando isto estiver "
                  "resolvido, feche-o e "
                  "abra-o de novo."},
    });
}

void TstCadastros::findsTheRegister()
{
    const auto [places, dirWin, opened, boxes] = row<QString, QString, QString, QString>();
    for (const QString &place : places.split(u' ', Qt::SkipEmptyParts))
        make(place);
    configure(dirWin);
    gConfig.ArquivoCnf = u"\\x\\zeto_cnf.txt"_s;
    AbreBDAlunos();
    const QString cad = folder(u"cad"_s); // in boxes paths are the system's, but for the title that a box is given
    QString expected = QString(boxes).replace("i %1"_L1, u"i "_s + barras(cad)).replace("%1"_L1, cad);
    expected.replace("%2"_L1, QDir::toNativeSeparators(cad + u"/Cadastros.mdb"_s));
    QCOMPARE(told(), expected.replace("%3"_L1, QDir::toNativeSeparators(u"/x/zeto_cnf.txt"_s)));
    QCOMPARE(gBD->Source() ? classes() : QString(), opened);
    if (opened.isEmpty())
        CopiaCadastros(); // nothing to copy either
    QCOMPARE(QFile::exists(file(u"cad"_s)), places.contains("cad"_L1));
    QCOMPARE(QFile::exists(file(u"win"_s)), places.contains("win"_L1));
}

void TstCadastros::generics_data()
{
    const QString theClass = u"9999|Genérica|Genérica|Chavema\n"_s;
    const QString link = u"9999|9999|2026-11-24 10:30:00"_s;
    rows<QString, QString>({
        // classes, pupils and links afterwards
        {"an empty register", "", theClass + "9999|Genérico\n" + link},
        {"one that has them all",
            "INSERT INTO CL_Classes VALUES (9999, 'x', 'y', 'z'); INSERT INTO AL_Alunos VALUES (9999, 'w');"
            "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (9999, 5)",
            "9999|x|y|z\n9999|w\n9999|5|NULL"},
        {"without the class",
            "INSERT INTO AL_Alunos VALUES (9999, 'w'); INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (9999, 9999)",
            theClass + "9999|w\n9999|9999|NULL"},
        {"without pupil and link, beside others",
            "INSERT INTO CL_Classes VALUES (9999, 'x', 'y', 'z'); INSERT INTO AL_Alunos VALUES (3, 'Ana');"
            "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (3, 9999)",
            "9999|x|y|z\n3|Ana\n9999|Genérico\n3|9999|NULL\n" + link},
        {"a link without a code is seen as none",
            "INSERT INTO CL_Classes VALUES (9999, '', '', ''); INSERT INTO AL_Alunos VALUES (9999, '');"
            "INSERT INTO CLxAL (AL_Cod) VALUES (9999)",
            "9999|||\n9999|\n9999|NULL|NULL\n" + link},
    });
}

void TstCadastros::generics()
{
    const auto [sql, rows] = row<QString, QString>();
    make(u"cad"_s, sql);
    AbreBDAlunos();
    gBD->Fechar();
    const QStringList found = plainSql(file(u"cad"_s),
        u"SELECT * FROM CL_Classes ORDER BY CL_Cod; SELECT * FROM AL_Alunos ORDER BY AL_Cod;"
        "SELECT AL_Cod, CL_Cod, CLxAL_DataIngr FROM CLxAL ORDER BY CLxAL_Id"_s);
    QCOMPARE(found.join(u'\n'), rows);
}

void TstCadastros::secondStartTouchesNothing()
{
    make(u"cad"_s, u""_s);
    AbreBDAlunos();
    gBD->Fechar();
    const QByteArray bytes = le(file(u"cad"_s));
    AbreBDAlunos();
    gBD->Fechar();
    QCOMPARE(le(file(u"cad"_s)), bytes);
}

void TstCadastros::pupilsOfTheClass_data()
{
    rows<qint32, QString, qint32, QString>({
        {"none", 0, "", 0, "Ana,Bia,Genérico"},
        {"by code", 2, "", 2, "Bia"},
        {"by a code that is not there", 77, "", 77, ""},
        {"by the beginning of its name", 0, "quinta", 1, "Ana"},
        {"with blanks", 0, "QUINTA a", 1, "Ana"},
        {"with an apostrophe", 0, "D'ág", 2, "Bia"},
        {"a name that none has", 0, "Sexta", 0, "Ana,Bia,Genérico"},
        {"the code comes first", 2, "quinta", 2, "Bia"},
    });
}

void TstCadastros::pupilsOfTheClass()
{
    const auto [code, className, chosen, pupils] = row<qint32, QString, qint32, QString>();
    make(u"cad"_s,
        kGenerics
            + u"INSERT INTO CL_Classes VALUES (1, 'Quinta A', '', ''), (2, 'D''Água', '', '');"
              "INSERT INTO AL_Alunos VALUES (3, 'Ana'), (4, 'Bia');"
              "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (3, 1), (4, 2)"_s);
    gClasse = code;
    gNomeClasse = className;
    AbreBDAlunos();
    QCOMPARE(gClasse, chosen);
    QStringList found = gBD->lista(u"RSAluno"_s, u"AL_Nome"_s, u","_s).split(u',');
    found.sort();
    QCOMPARE(found.join(u','), pupils);
}

void TstCadastros::tablesOfAllWindows()
{
    make(u"cad"_s,
        kGenerics
            + u"INSERT INTO CL_Classes VALUES (1, 'zebra', '', ''), (2, 'Água', '', '');"
              "INSERT INTO AL_Alunos VALUES (3, 'bia'), (4, 'Átila')"_s);
    gNomeClasse = u"a*b"_s; // put in as it came: a criterion that can't be read
    AbreBDAlunos();
    QCOMPARE(told(), u"! rsClasses - Pesquisa: O critério não pôde ser entendido."_s);
    QCOMPARE(gBD->TabelasAbertas(), QVariant(u"RsClasses\r\nRsAlunos\r\nrsClxAl\r\nRSAluno\r\n"_s));
    QCOMPARE(classes(), u"Água,Genérica,zebra"_s);
    QCOMPARE(gBD->lista(u"rsalunos"_s, u"AL_Nome"_s, u","_s), u"Átila,bia,Genérico"_s);
    gBD->RegistroAdiciona(u"rsAlunos"_s);
    gBD->RegistroTroca(u"AL_Nome"_s, u"Nova"_s, u"rsAlunos"_s);
    gBD->RegistroAtualiza(u"rsAlunos"_s);
    QCOMPARE(gBD->Campo(u"AL_Cod"_s, u"rsAlunos"_s), QVariant(10000)); // behind the generic one
}

void TstCadastros::copies_data()
{
    rows<bool, bool, QString>({
        // read-only; a copy of an earlier start; what the next start opens, empty where nothing is copied
        {"a register that can be written", false, false, ""},
        {"a read-only one", true, false, "cad,Genérica"},
        {"a read-only one, copied before", true, true, "Genérica,win"},
    });
}

static void setWritable(const QString &file, bool writable)
{
    QFile::setPermissions(file,
        QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther | (writable ? QFile::WriteOwner : QFile::Permission()));
}

void TstCadastros::copies()
{
    const auto [readOnly, there, next] = row<bool, bool, QString>();
    make(u"cad"_s);
    setWritable(file(u"cad"_s), !readOnly);
    if (there) {
        make(u"win"_s);
        setWritable(file(u"win"_s), false);
    }
    const QString configured = gConfig.Config(u"ZETO_CAD"_s);
    AbreBDAlunos();
    CopiaCadastros();
    QCOMPARE(classes(), u"cad,Genérica"_s); // this run goes on with it
    setWritable(file(u"cad"_s), true);
    const QStringList copied = QDir(folder(u"win"_s)).entryList(QDir::Files);
    QCOMPARE(gConfig.Config(u"ZETO_CAD"_s), next.isEmpty() ? configured : barras(folder(u"win"_s)));
    QCOMPARE(copied.isEmpty(), next.isEmpty());
    if (copied.isEmpty())
        return;
    QVERIFY(QFile::permissions(folder(u"win/"_s) + copied.first()) & QFile::WriteOwner);
    reiniciaData();
    AbreBDAlunos(); // the next start with this configuration finds the copy
    QCOMPARE(classes(), next);
}

void TstCadastros::copyThatFailsIsTold()
{
    make(u"cad"_s);
    setWritable(file(u"cad"_s), false);
    QDir(folder(u"win"_s)).removeRecursively();
    CopiaCadastros();
    const QString title = u"! Blocos de Roteiros do Sistema Quorel: "_s;
    QCOMPARE(told(),
        title + u"Erro ao copiar o arquivo CADASTROS.MDB para "_s + barras(folder(u"win"_s)) + u'\n' + title
            + u"Erro ao modificar o atributo de leitura do arquivo CADASTROS.MDB"_s);
    setWritable(file(u"cad"_s), true);
}

QTEST_MAIN(TstCadastros)
#include "tst_cadastros.moc"
