#include "apoio.h"
#include "support/suporte.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

using namespace quorel::teste;
using namespace Qt::StringLiterals;

namespace {

const QByteArray kJet = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4000, '\0');
const QString kGenericos = u"INSERT INTO CL_Classes VALUES (9999, 'Genérica', 'Genérica', 'Chavema');"
                           "INSERT INTO AL_Alunos VALUES (9999, 'Genérico');"
                           "INSERT INTO CLxAL VALUES (9999, 9999, '2026-02-01 08:00:00', 1);"_s;

} // namespace

class TstQuorelCadastro final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void anEmptyRegisterWantsTheGenericRows();
    void existingFileIsNeverCreatedAnew();
    void importsClassesAndPupils();
    void importsAllOrNothing_data();
    void importsAllOrNothing();
    void importsNothingWhileAProgramHoldsTheLock();
    void findsWhatIsToMend_data();
    void findsWhatIsToMend();
    void findsNoiseInAnyPage();
    void badFiles_data();
    void badFiles();
    void copiesWhileAProgramWrites();
    void copyReplacesNothingUnasked();
    void copyTakesNothingFromWhatItReplaces();
    void copyOfADamagedRegisterIsRefused();
    void exitCodes_data();
    void exitCodes();

private:
    int run(const QStringList &argumentos); ///< the real program. @return its exit code
    QString path(const QString &nome) const { return mDir->filePath(nome); }
    QString aRegister(const QString &sql = {}) const; ///< with the generic rows
    QStringList lines() const { return QString::fromUtf8(mSaida).split(u'\n', Qt::SkipEmptyParts); }

    std::unique_ptr<QTemporaryDir> mDir;
    QByteArray mSaida;
    QByteArray mErros;
};

void TstQuorelCadastro::init()
{
    failOnWarnings();
    mDir = std::make_unique<QTemporaryDir>();
}

int TstQuorelCadastro::run(const QStringList &argumentos)
{
    QProcess process;
    process.start(QStringLiteral(QUOREL_BIN "/quorel-cadastro"), argumentos);
    if (!process.waitForFinished())
        return -1;
    mSaida = linhas(process.readAllStandardOutput());
    mErros = linhas(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QString TstQuorelCadastro::aRegister(const QString &sql) const
{
    makeRegister(path(u"c.mdb"_s));
    plainSql(path(u"c.mdb"_s), kGenericos + sql);
    return path(u"c.mdb"_s);
}

void TstQuorelCadastro::anEmptyRegisterWantsTheGenericRows()
{
    QCOMPARE(run({u"cria"_s, path(u"novo.mdb"_s)}), 0);
    QCOMPARE(run({u"verifica"_s, path(u"novo.mdb"_s)}), 1);
    QCOMPARE(lines(),
        (QStringList{u"falta a classe genérica 9999; o programa a cria ao iniciar"_s,
            u"falta o aluno genérico 9999; o programa o cria ao iniciar"_s,
            u"falta a ligação do aluno genérico 9999; o programa a cria ao iniciar"_s}));
    QCOMPARE(run({u"conta"_s, path(u"novo.mdb"_s)}), 0);
    QCOMPARE(lines(), (QStringList{u"AL_Alunos\t0"_s, u"CL_Classes\t0"_s, u"CLxAL\t0"_s, u"LG_LogAulas\t0"_s}));
}

void TstQuorelCadastro::existingFileIsNeverCreatedAnew()
{
    escreve(path(u"c.mdb"_s), "isto fica");
    QCOMPARE(run({u"cria"_s, path(u"c.mdb"_s)}), 2);
    QVERIFY(QString::fromUtf8(mErros).endsWith(u"O arquivo já existe ou não pode ser criado.\n"_s));
    QCOMPARE(le(path(u"c.mdb"_s)), QByteArray("isto fica"));
    QCOMPARE(run({u"cria"_s, path(u"nada/c.mdb"_s)}), 2);
    QVERIFY(!QFileInfo::exists(path(u"nada"_s)));
}

void TstQuorelCadastro::importsClassesAndPupils()
{
    QCOMPARE(run({u"cria"_s, path(u"c.mdb"_s)}), 0);
    escreve(path(u"lista.txt"_s),
        "; uma lista\r\nclasse\t1\xBA ano\tZ\xE9lia\tuva\r\naluno\tCau\xE3 D'\xC1vila\r\n\r\nclasse\tVazia\r\n"
        "classe\tOutra\tRui\t12345678\r\naluno\tAna\r\naluno\tBia");
    QCOMPARE(run({u"importa"_s, path(u"c.mdb"_s), path(u"lista.txt"_s)}), 0);
    QCOMPARE(mErros, QByteArray());
    QCOMPARE(plainSql(path(u"c.mdb"_s),
                 u"SELECT CL_Nome, CL_Prof, CL_Senha, AL_Nome FROM CL_Classes LEFT JOIN CLxAL USING (CL_Cod) "
                 "LEFT JOIN AL_Alunos USING (AL_Cod) WHERE CL_Cod <> 9999 ORDER BY CL_Cod, AL_Cod"_s),
        (QStringList{u"1º ano|Zélia|uva|Cauã DÁvila"_s, u"Vazia|||NULL"_s, u"Outra|Rui|12345678|Ana"_s,
            u"Outra|Rui|12345678|Bia"_s}));
    QCOMPARE(run({u"verifica"_s, path(u"c.mdb"_s)}), 0);
    QCOMPARE(mSaida, QByteArray());
}

void TstQuorelCadastro::importsAllOrNothing_data()
{
    QTest::addColumn<QByteArray>("lista");
    QTest::addColumn<QString>("told");
    const QByteArray good = "classe\tA\r\naluno\tAna\r\n";
    const QString neither = u"linha %1: a linha não é uma classe, nem um aluno abaixo de uma classe\n"_s;
    QTest::newRow("a pupil above every class") << QByteArray("aluno\tAna\r\n") << neither.arg(1);
    QTest::newRow("a word that is neither") << good + "turma\tB\r\n" << neither.arg(3);
    QTest::newRow("a class without name") << good + "\r\nclasse\t \r\n" << u"linha 4: falta o nome\n"_s;
    QTest::newRow("a name of apostrophes alone") << good + "aluno\t''\r\n" << u"linha 3: falta o nome\n"_s;
    QTest::newRow("a password that no window lets type")
        << QByteArray("classe\tA\tRui\t123456789\r\n") << u"linha 1: a senha tem mais de 8 caracteres\n"_s;
    QTest::newRow("a line without tab") << good + "aluno" << u"linha 3: falta o nome\n"_s;
}

void TstQuorelCadastro::importsAllOrNothing()
{
    QFETCH(QByteArray, lista);
    QFETCH(QString, told);
    const QString file = aRegister();
    escreve(path(u"lista.txt"_s), lista);
    QCOMPARE(run({u"importa"_s, file, path(u"lista.txt"_s)}), 2);
    QVERIFY2(QString::fromUtf8(mErros).endsWith(told), mErros);
    QCOMPARE(plainSql(file, u"SELECT count(*) FROM CL_Classes UNION ALL SELECT count(*) FROM AL_Alunos"_s),
        (QStringList{u"1"_s, u"1"_s}));
}

void TstQuorelCadastro::importsNothingWhileAProgramHoldsTheLock()
{
    const QString file = aRegister();
    escreve(path(u"lista.txt"_s), "classe\tA\r\naluno\tAna\r\n");
    QProcess holder;
    holder.start(QStringLiteral(QUOREL_BIN "/filho_cadastro"), {file, u"trava"_s, u"IMMEDIATE"_s});
    QVERIFY(holder.waitForReadyRead());
    QCOMPARE(run({u"importa"_s, file, path(u"lista.txt"_s)}), 2);
    const QString told = u"linha 1: O banco de dados está em uso por outro programa. Tente novamente.\n"_s;
    QVERIFY2(QString::fromUtf8(mErros).endsWith(told), mErros);
    holder.closeWriteChannel();
    QVERIFY(holder.waitForFinished());
    QCOMPARE(plainSql(file, u"SELECT count(*) FROM CL_Classes UNION ALL SELECT count(*) FROM AL_Alunos"_s),
        (QStringList{u"1"_s, u"1"_s}));
}

void TstQuorelCadastro::findsWhatIsToMend_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QStringList>("findings");
    QTest::newRow("all well") << QString() << QStringList();
    QTest::newRow("more columns and tables are none of its business")
        << u"ALTER TABLE AL_Alunos ADD AL_Foto BLOB; CREATE TABLE Outra (a)"_s << QStringList();
    QTest::newRow("a table") << u"DROP TABLE LG_LogAulas"_s << QStringList{u"falta a tabela LG_LOGAULAS"_s};
    QTest::newRow("a column") << u"ALTER TABLE CL_Classes DROP CL_Senha"_s
                              << QStringList{u"falta a coluna CL_SENHA da tabela CL_CLASSES"_s};
    QTest::newRow("a column of another type")
        << u"ALTER TABLE CL_Classes DROP CL_Senha; ALTER TABLE CL_Classes ADD CL_Senha INTEGER"_s
        << QStringList{u"a coluna CL_SENHA da tabela CL_CLASSES é de outro tipo"_s};
    QTest::newRow("the generic class") << u"DELETE FROM CL_Classes"_s
                                       << QStringList{u"falta a classe genérica 9999; o programa a cria ao iniciar"_s,
                                              u"ligações sem classe na tabela CLxAL: 1"_s};
    QTest::newRow("the generic link") << u"DELETE FROM CLxAL"_s
                                      << QStringList{
                                             u"falta a ligação do aluno genérico 9999; o programa a cria ao iniciar"_s};
    QTest::newRow("links to nothing")
        << u"INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (1, 9999), (NULL, 9999), (9999, 5)"_s
        << QStringList{u"ligações sem aluno na tabela CLxAL: 2"_s, u"ligações sem classe na tabela CLxAL: 1"_s};
    QTest::newRow("log rows of nobody") << u"INSERT INTO LG_LogAulas (LG_Aluno) VALUES (1), (1), (NULL), (9999)"_s
                                        << QStringList{u"aulas registradas sem aluno na tabela LG_LogAulas: 3"_s};
    QTest::newRow("an index that lacks rows")
        << u"INSERT INTO CLxAL VALUES (9999, 9999, NULL, 2); PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql = "
           "'CREATE INDEX CLxAL_Classe ON CLxAL (AL_Cod, CL_Cod)' WHERE name = 'CLxAL_Classe'"_s
        << QStringList{u"dano no índice CLxAL_Classe"_s};
}

void TstQuorelCadastro::findsWhatIsToMend()
{
    QFETCH(QString, sql);
    QFETCH(QStringList, findings);
    const QString file = aRegister(sql);
    const QByteArray before = le(file);
    QCOMPARE(run({u"verifica"_s, file}), findings.isEmpty() ? 0 : 1);
    QCOMPARE(lines(), findings);
    QCOMPARE(mErros, QByteArray());
    QCOMPARE(le(file), before);
}

/// Each page in turn, but the first, which makes it no database at all.
void TstQuorelCadastro::findsNoiseInAnyPage()
{
    const QString file = aRegister();
    const QByteArray sound = le(file);
    const int size = plainSql(file, u"PRAGMA page_size"_s).first().toInt();
    QVERIFY(sound.size() >= 5 * size);
    for (qsizetype page = 1; page < sound.size() / size; ++page) {
        QByteArray noisy = sound;
        for (qsizetype i = 0; i < size; ++i)
            noisy[page * size + i] = static_cast<char>(i * 31 + 7);
        escreve(file, noisy);
        QCOMPARE(run({u"verifica"_s, file}), 1);
        QVERIFY2(lines().value(0).startsWith(u"dano n"_s)
                || lines().value(0) == u"O arquivo do banco de dados está danificado."_s,
            mSaida);
        QCOMPARE(le(file), noisy);
    }
}

void TstQuorelCadastro::badFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("told");
    const QString none = u"O arquivo não é um banco de dados, ou está danificado."_s;
    QTest::newRow("empty") << QByteArray("") << u"O arquivo do banco de dados está vazio."_s;
    QTest::newRow("the old format")
        << kJet
        << u"O arquivo do banco de dados está no formato antigo (Jet) e não pode ser aberto. Crie um cadastro novo com o programa quorel-cadastro."_s;
    QTest::newRow("a few bytes") << QByteArray("SQLite format 3\0", 16) << none;
    QTest::newRow("a text") << QByteArray("Não é um banco. ").repeated(500) << none;
    QTest::newRow("missing") << QByteArray() << u"O arquivo do banco de dados não pôde ser aberto."_s;
}

void TstQuorelCadastro::badFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, told);
    const QString file = path(u"c.mdb"_s);
    if (!bytes.isNull())
        escreve(file, bytes);
    escreve(path(u"lista.txt"_s), "classe\tA\r\n");
    for (const QStringList &job : {QStringList{u"conta"_s, file}, {u"copia"_s, file, path(u"d.mdb"_s)},
             {u"importa"_s, file, path(u"lista.txt"_s)}}) {
        QCOMPARE(run(job), 2);
        QVERIFY2(QString::fromUtf8(mErros).endsWith(told + u'\n'), mErros);
        QCOMPARE(le(file), bytes);
    }
    const int code = run({u"verifica"_s, file});
    QVERIFY2(code == 1 || code == 2, mErros); // a file that opens and holds no database is something found
    QVERIFY(QString::fromUtf8(mSaida + mErros).contains(told));
    QCOMPARE(QDir(mDir->path()).entryList(QDir::Files),
        bytes.isNull() ? QStringList(u"lista.txt"_s) : (QStringList{u"c.mdb"_s, u"lista.txt"_s}));
}

void TstQuorelCadastro::copiesWhileAProgramWrites()
{
    const QString file = aRegister();
    QProcess writer;
    writer.start(QStringLiteral(QUOREL_BIN "/filho_cadastro"), {file, u"salva"_s});
    QVERIFY(writer.waitForReadyRead());
    for (int copy = 0; copy < 3; ++copy) {
        const int least = plainSql(file, u"SELECT count(*) FROM LG_LogAulas"_s).first().toInt();
        QCOMPARE(run({u"copia"_s, file, path(u"d.mdb"_s), u"--sobrescreve"_s}), 0);
        const int most = plainSql(file, u"SELECT count(*) FROM LG_LogAulas"_s).first().toInt();
        const QString copied = plainSql(path(u"d.mdb"_s), u"SELECT count(*) FROM LG_LogAulas"_s).first();
        QVERIFY2(copied.toInt() >= least && copied.toInt() <= most, qPrintable(copied));
        QCOMPARE(run({u"verifica"_s, path(u"d.mdb"_s)}), 0);
    }
    QCOMPARE(writer.state(), QProcess::Running);
    QVERIFY(!writer.readAllStandardOutput().contains("caixa"));
    writer.kill();
    QVERIFY(writer.waitForFinished());
}

void TstQuorelCadastro::copyReplacesNothingUnasked()
{
    const QString file = aRegister();
    const QByteArray bytes = le(file);
    escreve(path(u"d.mdb"_s), "isto fica");
    QCOMPARE(run({u"copia"_s, file, path(u"d.mdb"_s)}), 2);
    QVERIFY(QString::fromUtf8(mErros).endsWith(u"O arquivo de destino já existe.\n"_s));
    QCOMPARE(le(path(u"d.mdb"_s)), QByteArray("isto fica"));
    QCOMPARE(run({u"copia"_s, file, file, u"--sobrescreve"_s}), 2);
    QVERIFY(QString::fromUtf8(mErros).endsWith(u"A origem e o destino são o mesmo arquivo.\n"_s));
    QCOMPARE(run({u"copia"_s, file, path(u"nada/d.mdb"_s)}), 2);
    QCOMPARE(run({u"copia"_s, file, path(u"d.mdb"_s), u"--sobrescreve"_s}), 0);
    QCOMPARE(plainSql(path(u"d.mdb"_s), u"SELECT AL_Nome FROM AL_Alunos"_s), QStringList(u"Genérico"_s));
    QCOMPARE(le(file), bytes);
    QCOMPARE(QDir(mDir->path()).entryList(QDir::Files), (QStringList{u"c.mdb"_s, u"d.mdb"_s}));
}

/// Half a save, as a program that dies leaves it beside the register: the next who opens it plays it back.
static void leaveHalfASave(const QString &file)
{
    sqlite3 *db = nullptr;
    QCOMPARE(sqlite3_open(file.toUtf8().constData(), &db), SQLITE_OK);
    const char *save = "PRAGMA cache_size = 1; BEGIN; DELETE FROM AL_Alunos; "
                       "WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 500) "
                       "INSERT INTO AL_Alunos (AL_Nome) SELECT hex(zeroblob(100)) FROM n";
    QCOMPARE(sqlite3_exec(db, save, nullptr, nullptr, nullptr), SQLITE_OK);
    const QByteArray journal = le(file + "-journal"_L1);
    QCOMPARE(sqlite3_close(db), SQLITE_OK);
    escreve(file + "-journal"_L1, journal);
}

void TstQuorelCadastro::copyTakesNothingFromWhatItReplaces()
{
    makeRegister(path(u"d.mdb"_s));
    leaveHalfASave(path(u"d.mdb"_s));
    const QString file = aRegister();
    QCOMPARE(run({u"copia"_s, file, path(u"d.mdb"_s), u"--sobrescreve"_s}), 0);
    QCOMPARE(plainSql(path(u"d.mdb"_s), u"SELECT AL_Nome FROM AL_Alunos"_s), QStringList(u"Genérico"_s));
}

void TstQuorelCadastro::copyOfADamagedRegisterIsRefused()
{
    const QString file = aRegister();
    QByteArray bytes = le(file);
    bytes.replace(bytes.size() - 2000, 2000, QByteArray(2000, '\x55'));
    const int size = plainSql(file, u"PRAGMA page_size"_s).first().toInt();
    bytes.replace(size, 200, QByteArray(200, '\x55'));
    escreve(file, bytes);
    QCOMPARE(run({u"copia"_s, file, path(u"d.mdb"_s)}), 2);
    QVERIFY2(
        QString::fromUtf8(mErros).contains(u"danificad"_s) || QString::fromUtf8(mErros).contains(u"há dano"_s), mErros);
    QCOMPARE(QDir(mDir->path()).entryList(QDir::Files), QStringList(u"c.mdb"_s));
}

void TstQuorelCadastro::exitCodes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::newRow("nothing") << QStringList() << 2;
    QTest::newRow("help") << QStringList{u"--help"_s} << 0;
    QTest::newRow("an unknown command") << QStringList{u"apaga"_s, u"c.mdb"_s} << 2;
    QTest::newRow("an unknown option") << QStringList{u"verifica"_s, u"c.mdb"_s, u"--tudo"_s} << 2;
    QTest::newRow("a file too few") << QStringList{u"copia"_s, u"c.mdb"_s} << 2;
    QTest::newRow("a file too many") << QStringList{u"cria"_s, u"c.mdb"_s, u"d.mdb"_s} << 2;
    QTest::newRow("overwriting is for copies") << QStringList{u"cria"_s, u"c.mdb"_s, u"--sobrescreve"_s} << 2;
}

void TstQuorelCadastro::exitCodes()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, code);
    QCOMPARE(run(arguments), code);
    QVERIFY(QString::fromUtf8(code == 0 ? mSaida : mErros).startsWith(u"Uso:\n  quorel-cadastro cria ARQUIVO\n"_s));
    QVERIFY((code == 0 ? mErros : mSaida).isEmpty());
}

QTEST_GUILESS_MAIN(TstQuorelCadastro)
#include "tst_quorel_cadastro.moc"
