#include "apoio.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "data/conexao.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

/// Finding, opening and completing the register at the start, and moving one off read-only media.
class TstCadastros final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> mHome;
    QString cad() const { return mHome->filePath(u"cad/Cadastros.mdb"_s); }
    QString win() const { return mHome->filePath(u"win/Cadastros.mdb"_s); }
    void configure(const QString &dirWin = {}) const;
    /// A register at a native path, with the generic rows and a class that tells which one it is.
    static void marked(const QString &native, const QString &name);

private slots:
    void init();
    void cleanup();
    void findsTheRegister_data();
    void findsTheRegister();
    void noRegisterIsTold();
    void dirWinHidesTheFallback();
    void generics_data();
    void generics();
    void secondStartAddsNothing();
    void pupilsOfTheClass_data();
    void pupilsOfTheClass();
    void tablesOfAllWindows();
    void copies_data();
    void copies();
    void copyThatFailsIsTold();
};

void TstCadastros::init()
{
    failOnWarnings();
    reiniciaCosturas();
    reiniciaStartup();
    reiniciaData();
    costuras().now = [] { return QDateTime({2026, 11, 24}, {10, 30}); };
    mHome = std::make_unique<QTemporaryDir>();
    QDir(mHome->path()).mkdir(u"win"_s);
    qputenv("QUOREL_WINDIR", mHome->filePath(u"win"_s).toUtf8());
    gClasse = 0;
    configure();
}

void TstCadastros::cleanup()
{
    reiniciaData();
    mHome.reset();
}

void TstCadastros::configure(const QString &dirWin) const
{
    gConfig.SetaCFG(u"ZETO_CAD="_s + barras(mHome->filePath(u"cad"_s)) + u"\r\nDIRWIN="_s + dirWin + u"\r\n"_s);
}

void TstCadastros::marked(const QString &native, const QString &name)
{
    escreve(native, {});
    makeRegister(native);
    plainSql(native,
        u"INSERT INTO CL_Classes (CL_Cod, CL_Nome) VALUES (1, '%1'), (9999, 'Genérica');"
        "INSERT INTO AL_Alunos VALUES (9999, 'Genérico'); INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (9999, 9999)"_s.arg(
            name));
}

void TstCadastros::findsTheRegister_data()
{
    QTest::addColumn<QString>("places");
    QTest::addColumn<QString>("dirWin");
    QTest::addColumn<QString>("opened");
    QTest::newRow("configured") << u"cad"_s << u""_s << u"cad,Genérica"_s;
    QTest::newRow("configured before the Windows directory") << u"cad win"_s << u""_s << u"cad,Genérica"_s;
    QTest::newRow("in the Windows directory") << u"win"_s << u""_s << u"Genérica,win"_s;
    QTest::newRow("configured, with DIRWIN") << u"cad win"_s << u"\\x"_s << u"cad,Genérica"_s;
}

void TstCadastros::findsTheRegister()
{
    QFETCH(QString, places);
    QFETCH(QString, dirWin);
    QFETCH(QString, opened);
    for (const QString &place : places.split(u' '))
        marked(place == "cad"_L1 ? cad() : win(), place);
    configure(dirWin);
    const BoxScript boxes;
    AbreBDAlunos();
    QCOMPARE(gBD->lista(u"rsClasses"_s, u"CL_Nome"_s, u","_s), opened);
}

void TstCadastros::noRegisterIsTold()
{
    BoxScript boxes{Resposta::Ok};
    AbreBDAlunos();
    QCOMPARE(boxes.last(),
        (Caixa{u"Arquivo de Cadastros dos alunos não foi localizado"_s, barras(mHome->filePath(u"cad"_s)),
            Icone::Informacao}));
    QVERIFY(!gBD->Source());
    QVERIFY(!gBD->ExisteAlias(u"rsClasses"_s));
    CopiaCadastros(); // nothing to copy either
    QVERIFY(!QFile::exists(cad()) && !QFile::exists(win()));
}

/// Without a register and with DIRWIN set the first query fails; so does every later one.
void TstCadastros::dirWinHidesTheFallback()
{
    marked(win(), u"win"_s);
    configure(u"C:\\WINDOWS"_s);
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    AbreBDAlunos();
    const QString text = u"3709%1Não há conexão aberta com o banco de dados."_s;
    QCOMPARE(boxes.shown()[0], (Caixa{u"Select * From CL_Classes\r\n"_s + text.arg(QChar(u'\t')), u"rsClasses"_s}));
    QCOMPARE(boxes.shown()[1], (Caixa{text.arg(QChar(u' ')), u"AbreBDAlunos"_s, Icone::Informacao}));
    QVERIFY(!gBD->Source());
}

void TstCadastros::generics_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QStringList>("rows"); // classes, pupils, links
    const QString theClass = u"9999|Genérica|Genérica|Chavema"_s;
    const QString pupil = u"9999|Genérico"_s;
    const QString link = u"9999|9999|2026-11-24 10:30:00"_s;
    QTest::newRow("an empty register") << QString() << QStringList{theClass, pupil, link};
    QTest::newRow("one that has them all")
        << u"INSERT INTO CL_Classes VALUES (9999, 'x', 'y', 'z'); INSERT INTO AL_Alunos VALUES (9999, 'w');"
           "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (9999, 5)"_s
        << QStringList{u"9999|x|y|z"_s, u"9999|w"_s, u"9999|5|NULL"_s};
    QTest::newRow("without the class")
        << u"INSERT INTO AL_Alunos VALUES (9999, 'w'); INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (9999, 9999)"_s
        << QStringList{theClass, u"9999|w"_s, u"9999|9999|NULL"_s};
    QTest::newRow("without pupil and link, beside others")
        << u"INSERT INTO CL_Classes VALUES (9999, 'x', 'y', 'z'); INSERT INTO AL_Alunos VALUES (3, 'Ana');"
           "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (3, 9999)"_s
        << QStringList{u"9999|x|y|z"_s, u"3|Ana"_s, pupil, u"3|9999|NULL"_s, link};
    QTest::newRow("a link without a code is seen as none")
        << u"INSERT INTO CL_Classes VALUES (9999, '', '', ''); INSERT INTO AL_Alunos VALUES (9999, '');"
           "INSERT INTO CLxAL (AL_Cod) VALUES (9999)"_s
        << QStringList{u"9999|||"_s, u"9999|"_s, u"9999|NULL|NULL"_s, link};
}

void TstCadastros::generics()
{
    QFETCH(QString, sql);
    QFETCH(QStringList, rows);
    escreve(cad(), {});
    makeRegister(cad());
    plainSql(cad(), sql);
    const BoxScript boxes;
    AbreBDAlunos();
    gBD->Fechar();
    QCOMPARE(plainSql(cad(),
                 u"SELECT * FROM CL_Classes ORDER BY CL_Cod; SELECT * FROM AL_Alunos ORDER BY AL_Cod;"
                 "SELECT AL_Cod, CL_Cod, CLxAL_DataIngr FROM CLxAL ORDER BY CLxAL_Id"_s),
        rows);
}

void TstCadastros::secondStartAddsNothing()
{
    escreve(cad(), {});
    makeRegister(cad());
    const BoxScript boxes;
    AbreBDAlunos();
    gBD->Fechar();
    const QByteArray bytes = le(cad());
    reiniciaData();
    AbreBDAlunos();
    gBD->Fechar();
    QCOMPARE(le(cad()), bytes); // not even touched
}

void TstCadastros::pupilsOfTheClass_data()
{
    QTest::addColumn<qint32>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint32>("chosen");
    QTest::addColumn<QString>("pupils");
    QTest::newRow("none") << 0 << u""_s << 0 << u"Ana,Bia,Genérico"_s;
    QTest::newRow("by code") << 2 << u""_s << 2 << u"Bia"_s;
    QTest::newRow("by a code that is not there") << 77 << u""_s << 77 << u""_s;
    QTest::newRow("by the beginning of its name") << 0 << u"quinta"_s << 1 << u"Ana"_s;
    QTest::newRow("with blanks") << 0 << u"QUINTA a"_s << 1 << u"Ana"_s;
    QTest::newRow("with an apostrophe") << 0 << u"D'ág"_s << 2 << u"Bia"_s;
    QTest::newRow("a name that none has") << 0 << u"Sexta"_s << 0 << u"Ana,Bia,Genérico"_s;
    QTest::newRow("the code comes first") << 2 << u"quinta"_s << 2 << u"Bia"_s;
}

void TstCadastros::pupilsOfTheClass()
{
    QFETCH(qint32, code);
    QFETCH(QString, name);
    QFETCH(qint32, chosen);
    QFETCH(QString, pupils);
    marked(cad(), u"Quinta A"_s);
    plainSql(cad(),
        u"INSERT INTO CL_Classes VALUES (2, 'D''Água', '', ''); INSERT INTO AL_Alunos VALUES (3, 'Ana'),"
        "(4, 'Bia'); INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (3, 1), (4, 2)"_s);
    gClasse = code;
    gNomeClasse = name;
    const BoxScript boxes;
    AbreBDAlunos();
    QCOMPARE(gClasse, chosen);
    QStringList found = gBD->lista(u"RSAluno"_s, u"AL_Nome"_s, u","_s).split(u',');
    found.sort();
    QCOMPARE(found.join(u','), pupils);
}

void TstCadastros::tablesOfAllWindows()
{
    marked(cad(), u"zebra"_s);
    plainSql(cad(),
        u"INSERT INTO CL_Classes VALUES (2, 'Água', '', ''); INSERT INTO AL_Alunos VALUES (3, 'bia'),"
        "(4, 'Átila')"_s);
    gNomeClasse = u"a*b"_s; // put in as it came: a criterion that can't be read
    BoxScript boxes{Resposta::Ok};
    AbreBDAlunos();
    QCOMPARE(boxes.last(), (Caixa{u"O critério não pôde ser entendido."_s, u"rsClasses - Pesquisa"_s, Icone::Critico}));
    QCOMPARE(gBD->TabelasAbertas(), QVariant(u"RsClasses\r\nRsAlunos\r\nrsClxAl\r\nRSAluno\r\n"_s));
    QCOMPARE(gBD->lista(u"RSCLASSES"_s, u"CL_Nome"_s, u","_s), u"Água,Genérica,zebra"_s);
    QCOMPARE(gBD->lista(u"rsalunos"_s, u"AL_Nome"_s, u","_s), u"Átila,bia,Genérico"_s);
    gBD->RegistroAdiciona(u"rsAlunos"_s);
    gBD->RegistroTroca(u"AL_Nome"_s, u"Nova"_s, u"rsAlunos"_s);
    gBD->RegistroAtualiza(u"rsAlunos"_s);
    QCOMPARE(gBD->Campo(u"AL_Cod"_s, u"rsAlunos"_s), QVariant(10000)); // behind the generic one
}

void TstCadastros::copies_data()
{
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("there"); // a copy of an earlier start
    QTest::addColumn<QString>("copied"); // the class in the Windows directory afterwards
    QTest::newRow("a register that can be written") << false << false << u""_s;
    QTest::newRow("a read-only one") << true << false << u"cad"_s;
    QTest::newRow("a read-only one, copied before") << true << true << u"win"_s;
}

void TstCadastros::copies()
{
    QFETCH(bool, readOnly);
    QFETCH(bool, there);
    QFETCH(QString, copied);
    const auto readOnlyBits = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    marked(cad(), u"cad"_s);
    if (there) {
        marked(win(), u"win"_s);
        QFile::setPermissions(win(), readOnlyBits);
    }
    if (readOnly)
        QFile::setPermissions(cad(), readOnlyBits);
    const QString configured = gConfig.Config(u"ZETO_CAD"_s);
    const BoxScript boxes;
    AbreBDAlunos();
    CopiaCadastros();
    QCOMPARE(gBD->lista(u"rsClasses"_s, u"CL_Nome"_s, u","_s), u"cad,Genérica"_s); // this run goes on with it
    QCOMPARE(gConfig.Config(u"ZETO_CAD"_s), copied.isEmpty() ? configured : barras(mHome->filePath(u"win"_s)));
    QFile::setPermissions(cad(), readOnlyBits | QFile::WriteOwner);
    const QString target =
        mHome->filePath(u"win/"_s) + QDir(mHome->filePath(u"win"_s)).entryList(QDir::Files).value(0, u"none"_s);
    QCOMPARE(QFile::exists(target), !copied.isEmpty());
    if (copied.isEmpty())
        return;
    QVERIFY(QFile::permissions(target) & QFile::WriteOwner);
    reiniciaData();
    AbreBDAlunos(); // the next start with this configuration finds the copy
    QCOMPARE(
        gBD->lista(u"rsClasses"_s, u"CL_Nome"_s, u","_s), copied == "cad"_L1 ? u"cad,Genérica"_s : u"Genérica,win"_s);
}

void TstCadastros::copyThatFailsIsTold()
{
    marked(cad(), u"cad"_s);
    QFile::setPermissions(cad(), QFile::ReadOwner);
    QDir(mHome->filePath(u"win"_s)).removeRecursively();
    const QString folder = barras(mHome->filePath(u"win"_s));
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    CopiaCadastros();
    QCOMPARE(boxes.shown()[0],
        (Caixa{.texto = u"Erro ao copiar o arquivo CADASTROS.MDB para "_s + folder, .icone = Icone::Critico}));
    QCOMPARE(boxes.shown()[1],
        (Caixa{
            .texto = u"Erro ao modificar o atributo de leitura do arquivo CADASTROS.MDB"_s, .icone = Icone::Critico}));
    QFile::setPermissions(cad(), QFile::ReadOwner | QFile::WriteOwner);
}

QTEST_MAIN(TstCadastros)
#include "tst_cadastros.moc"
