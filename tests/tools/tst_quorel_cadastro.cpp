#include "apoio.h"
#include "platform/codec.h"
#include "programa.h"
#include "support/table.h"

#include <QDir>
#include <QFile>
#include <QStringEncoder>

#include <sqlite3.h>

#include <algorithm>

using namespace quorel::teste;
using namespace Qt::StringLiterals;

static const QString kEmpty = u"O arquivo do banco de dados está vazio."_s;
static const QString kJet = u"O arquivo do banco de dados está no formato antigo (Jet) e não pode ser aberto. Crie um "
                            "cadastro novo com o programa quorel-cadastro."_s;
static const QString kNoDatabase = u"O arquivo não é um banco de dados, ou está danificado."_s;
static const QString kDamaged = u"O arquivo do banco de dados está danificado."_s;
static const QByteArray kGoodList = "classe\tA\r\naluno\tAna\r\n";

class TstQuorelCadastro final : public TesteDePrograma
{
    Q_OBJECT
public:
    TstQuorelCadastro() : TesteDePrograma(u"quorel-cadastro"_s) { }

private slots:
    void aFreshRegisterHasTheGenericRowsOnly();
    void olderOnesAreBroughtUpToDate();
    void copiesAreOtherRegisters();
    void importsClassesAndPupils_data();
    void importsClassesAndPupils();
    void importsNothingWhileAProgramHoldsTheLock();
    void outcomes_data();
    void outcomes();
    void helps();
    void findsNoiseInAnyPage();
    void badFiles_data();
    void badFiles();
    void copiesWhileAProgramWrites();
    void copyTakesNothingFromWhatItReplaces();
    void copyRefusesARegisterInUse();
    void copyOfADamagedRegisterIsRefused();

private:
    QString c() const { return path(u"c.mdb"_s); } ///< the register
    QString d() const { return path(u"d.mdb"_s); } ///< its copy
    void makeC(const QString &sql = {}) const; ///< with the generic rows
    static QString count(const QString &file, const QString &table);
};

void TstQuorelCadastro::makeC(const QString &sql) const
{
    makeRegister(c());
    plainSql(c(),
        u"INSERT INTO CL_Classes VALUES (9999, 'Genérica', 'Genérica', 'Chavema');"
        "INSERT INTO AL_Alunos VALUES (9999, 'Genérico');"
        "INSERT INTO CLxAL VALUES (9999, 9999, '2026-02-01 08:00:00', 1);"_s
            + sql);
}

QString TstQuorelCadastro::count(const QString &file, const QString &table)
{
    return plainSql(file, u"SELECT count(*) FROM "_s + table).first();
}

void TstQuorelCadastro::aFreshRegisterHasTheGenericRowsOnly()
{
    QCOMPARE(run({u"cria"_s, c()}), 0);
    QCOMPARE(run({u"verifica"_s, c()}), 0);
    QCOMPARE(run({u"conta"_s, c()}), 0);
    QCOMPARE(lines(),
        (QStringList{u"AL_Alunos\t1"_s, u"AL_Destinos\t0"_s, u"AL_Extra\t0"_s, u"CL_Classes\t1"_s, u"CLxAL\t1"_s,
            u"LG_Entregas\t0"_s, u"LG_LogAulas\t0"_s, u"QR_Registro\t3"_s}));
    QCOMPARE(plainSql(c(), u"INSERT INTO AL_Alunos (AL_Nome) VALUES ('Ana'); SELECT max(AL_Cod) FROM AL_Alunos"_s),
        QStringList(u"10000"_s));
}

static QString identityOf(const QString &file)
{
    return plainSql(file, u"SELECT valor FROM QR_Registro WHERE chave = 'identidade'"_s).value(0);
}

/// A register as it was before there were tables of ours; two copies of it get the same ids for their rows.
void TstQuorelCadastro::olderOnesAreBroughtUpToDate()
{
    makeC(u"DROP TABLE LG_Entregas; DROP TABLE AL_Extra; DROP TABLE AL_Destinos; DROP INDEX LG_AlunoClasseData;"
          "INSERT INTO LG_LogAulas (LG_Aluno) VALUES (9999), (9999)"_s);
    QVERIFY(QFile::copy(c(), d()));
    QCOMPARE(run({u"verifica"_s, c()}), 1);
    QCOMPARE(lines(), QStringList(u"o cadastro é de uma versão anterior; rode quorel-cadastro atualiza"_s));
    QCOMPARE(outcome(u"atualiza c.mdb"_s), u"0 / "_s);
    QCOMPARE(outcome(u"atualiza c.mdb"_s), u"0 / não faltava nada"_s);
    QCOMPARE(outcome(u"atualiza d.mdb"_s), u"0 / "_s);
    const QString ids = u"SELECT LG_Uuid, LG_Id, origem FROM LG_Entregas ORDER BY LG_Id"_s;
    QCOMPARE(plainSql(c(), ids).size(), 2);
    QCOMPARE(plainSql(c(), ids), plainSql(d(), ids));
    QCOMPARE(run({u"verifica"_s, c()}), 0);
    plainSql(d(), u"DROP TABLE QR_Registro"_s); // older still
    QCOMPARE(outcome(u"atualiza d.mdb"_s), u"0 / "_s);
    QVERIFY(!identityOf(d()).isEmpty());
}

void TstQuorelCadastro::copiesAreOtherRegisters()
{
    makeC(u"INSERT INTO LG_LogAulas (LG_Aluno) VALUES (9999)"_s);
    const QString original = identityOf(c());
    const auto earlier = [this] {
        return plainSql(d(), u"SELECT valor FROM QR_Registro WHERE chave = 'anteriores'"_s).value(0);
    };
    QCOMPARE(outcome(u"copia c.mdb d.mdb"_s), u"0 / "_s);
    const QString copy = identityOf(d());
    QVERIFY(copy != original);
    QCOMPARE(earlier(), QString()); // rows for the original are none of its business, unless it takes its place
    QCOMPARE(outcome(u"restaurado d.mdb"_s), u"0 / "_s);
    QVERIFY(identityOf(d()) != copy);
    QCOMPARE(earlier(), copy + u' ' + original);

    QCOMPARE(outcome(u"copia c.mdb d.mdb --muda --sobrescreve"_s), u"0 / "_s);
    QCOMPARE(identityOf(d()), original);
    QCOMPARE(run({u"verifica"_s, c()}), 1);
    QVERIFY2(lines().value(0).startsWith(u"Este cadastro mudou para "_s), mSaida);
    QCOMPARE(run({u"verifica"_s, d()}), 0);
    file(u"lista.txt"_s, kGoodList);
    QCOMPARE(run({u"importa"_s, c(), u"lista.txt"_s}), 2);
    QVERIFY2(errors().contains(u"Este cadastro mudou para "_s), mErros);
}

void TstQuorelCadastro::importsClassesAndPupils_data()
{
    const QString list = u"; uma lista\r\nclasse\t1º ano\tZélia\tuva\r\naluno\tCauã D'Ávila\r\n\r\n"
                         "classe\tVazia\r\nclasse\tOutra\tRui\t12345678\r\naluno\tAna\r\naluno\tJosé"_s;
    rows<QByteArray>({
        {"code page 1252", quorel::encode1252(list)},
        {"UTF-8", list.toUtf8()},
        {"UTF-8 with its mark, accents by themselves",
            "\xEF\xBB\xBF" + list.normalized(QString::NormalizationForm_D).toUtf8()},
        {"UTF-16 with its mark", QStringEncoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom)(list)},
    });
}

void TstQuorelCadastro::importsClassesAndPupils()
{
    const auto [list] = row<QByteArray>();
    makeC(u"INSERT INTO CL_Classes (CL_Nome) VALUES ('OUTRA'); INSERT INTO AL_Alunos (AL_Nome) VALUES ('josé')"_s);
    file(u"lista.txt"_s, list);
    QCOMPARE(outcome(u"importa c.mdb lista.txt"_s),
        u"0 / linha 6: a classe \"Outra\" já estava lá / linha 8: o nome de aluno \"José\" já estava lá / "
        "classes gravadas: 3; alunos gravados: 3"_s);
    QCOMPARE(mErros, QByteArray());
    QCOMPARE(plainSql(c(),
                 u"SELECT CL_Nome, CL_Prof, CL_Senha, AL_Nome FROM CL_Classes LEFT JOIN CLxAL USING (CL_Cod) "
                 "LEFT JOIN AL_Alunos USING (AL_Cod) WHERE CL_Cod > 10000 ORDER BY CL_Cod, AL_Cod"_s),
        (QStringList{u"1º ano|Zélia|uva|Cauã DÁvila"_s, u"Vazia|||NULL"_s, u"Outra|Rui|12345678|Ana"_s,
            u"Outra|Rui|12345678|José"_s}));
    QCOMPARE(run({u"verifica"_s, c()}), 0);
    QCOMPARE(mSaida, QByteArray());
}

void TstQuorelCadastro::importsNothingWhileAProgramHoldsTheLock()
{
    makeC();
    file(u"lista.txt"_s, kGoodList);
    QProcess holder;
    holder.start(QStringLiteral(QUOREL_BIN "/filho_cadastro"), {c(), u"trava"_s, u"IMMEDIATE"_s});
    QVERIFY(holder.waitForReadyRead());
    QCOMPARE(run({u"importa"_s, c(), u"lista.txt"_s}), 2);
    const QString said = QDir::toNativeSeparators(c()) + u": O banco de dados está em uso por outro programa."_s;
    QVERIFY2(errors().startsWith(said), mErros);
    holder.closeWriteChannel();
    QVERIFY(holder.waitForFinished());
    QCOMPARE(count(c(), u"CL_Classes"_s) + count(c(), u"AL_Alunos"_s), u"11"_s);
}

void TstQuorelCadastro::outcomes_data()
{
    const QString list = u"importa c.mdb lista.txt"_s, check = u"verifica c.mdb"_s;
    const QString usage = u"2 / Código de saída: 0 tudo em ordem, 1 há o que consertar, 2 não foi possível executar."_s;
    const QString neither = u"2 / lista.txt: linha %1: a linha não é uma classe, nem um aluno abaixo de uma classe"_s;
    rows<QString, QByteArray, QString, QString>({
        {"a pupil above every class", "", "aluno\tAna\r\n", list, neither.arg(1)},
        {"a word that is neither", "", kGoodList + "turma\tB\r\n", list, neither.arg(3)},
        {"a class without name", "", kGoodList + "\r\nclasse\t \r\n", list, "2 / lista.txt: linha 4: falta o nome"},
        {"a name of apostrophes alone", "", kGoodList + "aluno\t''\r\n", list, "2 / lista.txt: linha 3: falta o nome"},
        {"a password that no window lets type", "", "classe\tA\tRui\t123456789\r\n", list,
            "2 / lista.txt: linha 1: a senha tem mais de 8 caracteres"},
        {"a line without tab", "", kGoodList + "aluno", list, "2 / lista.txt: linha 3: falta o nome"},
        {"an empty list", "", "\r\n", list, "2 / lista.txt: A lista está vazia ou não pôde ser lida."},
        {"no list", "", "", "importa c.mdb nada.txt", "2 / nada.txt: A lista não foi encontrada."},

        {"all well", "", "", check, "0 / "},
        {"more columns and tables are none of its business",
            "ALTER TABLE AL_Alunos ADD AL_Foto BLOB; CREATE TABLE Outra (a)", "", check, "0 / "},
        {"a table", "DROP TABLE LG_LogAulas", "", check, "1 / falta a tabela LG_LOGAULAS"},
        {"a column", "ALTER TABLE CL_Classes DROP CL_Senha", "", check,
            "1 / falta a coluna CL_SENHA da tabela CL_CLASSES"},
        {"a column of another type",
            "ALTER TABLE CL_Classes DROP CL_Senha; ALTER TABLE CL_Classes ADD CL_Senha INTEGER", "", check,
            "1 / a coluna CL_SENHA da tabela CL_CLASSES é de outro tipo"},
        {"a key that gives no code",
            "DROP TABLE CL_Classes; CREATE TABLE CL_Classes (CL_Cod LONG PRIMARY KEY, CL_Nome VARCHAR, CL_Prof VARCHAR,"
            "CL_Senha VARCHAR); INSERT INTO CL_Classes (CL_Cod) VALUES (9999), (NULL), (2147483648)",
            "", check,
            "1 / a chave CL_COD da tabela CL_CLASSES não numera as linhas novas, que ficam sem código / "
            "códigos que restam para linhas novas da tabela CL_CLASSES: 0 / linhas sem código na tabela CL_CLASSES: 1 "
            "/ números que o programa não lê na coluna CL_COD da tabela CL_CLASSES: 1"},
        {"a key that gives codes again",
            "DROP TABLE AL_Alunos; CREATE TABLE AL_Alunos (AL_Cod INTEGER PRIMARY KEY, AL_Nome VARCHAR);"
            "INSERT INTO AL_Alunos VALUES (9999, x'FF')",
            "", check,
            "1 / a chave AL_COD da tabela AL_ALUNOS dá de novo o código de uma linha excluída / "
            "textos que o programa não lê na coluna AL_NOME da tabela AL_ALUNOS: 1"},
        {"codes that come to their end",
            "INSERT INTO AL_Alunos (AL_Cod) VALUES (2147483640); DELETE FROM AL_Alunos WHERE AL_Cod > 9999", "", check,
            "1 / códigos que restam para linhas novas da tabela AL_ALUNOS: 7"},
        {"dates and numbers of another form",
            "INSERT INTO LG_LogAulas (LG_Aluno, LG_Data, RO_Cod) VALUES (9999, '2026-02-30 08:00:00', 7), (9999, "
            "'24/11/2026', 'sete'), (9999, 46000.5, 7.5), (9999, '2026-11-24T08:00:00', 2147483648)",
            "", check,
            "1 / datas que o programa não lê na coluna LG_DATA da tabela LG_LOGAULAS: 4 / "
            "números que o programa não lê na coluna RO_COD da tabela LG_LOGAULAS: 3"},
        {"the generic class", "DELETE FROM CL_Classes", "", check,
            "1 / falta a classe genérica 9999; o programa a cria ao iniciar / ligações sem classe na tabela CLxAL: 1"},
        {"the generic link", "DELETE FROM CLxAL", "", check,
            "1 / falta a ligação do aluno genérico 9999; o programa a cria ao iniciar"},
        {"links to nothing", "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (1, 9999), (NULL, 9999), (9999, 5)", "", check,
            "1 / ligações sem aluno na tabela CLxAL: 2 / ligações sem classe na tabela CLxAL: 1"},
        {"log rows of nobody", "INSERT INTO LG_LogAulas (LG_Aluno) VALUES (1), (1), (NULL), (9999)", "", check,
            "1 / aulas registradas sem aluno na tabela LG_LogAulas: 3"},
        {"an index that lacks rows",
            "INSERT INTO CLxAL VALUES (9999, 9999, NULL, 2); PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql = "
            "'CREATE INDEX CLxAL_Classe ON CLxAL (AL_Cod, CL_Cod)' WHERE name = 'CLxAL_Classe'",
            "", check, "1 / dano no índice CLxAL_Classe"},

        {"made anew", "", "", "cria c.mdb", "2 / c.mdb: O arquivo já existe ou não pode ser criado."},
        {"made in no directory", "", "", "cria nada/c.mdb",
            "2 / nada/c.mdb: O arquivo já existe ou não pode ser criado."},
        {"copied over another unasked", "", "", "copia c.mdb lista.txt",
            "2 / lista.txt: O arquivo de destino já existe."},
        {"copied over itself", "", "", "copia c.mdb c.mdb --sobrescreve",
            "2 / c.mdb: A origem e o destino são o mesmo arquivo."},
        {"copied to no directory", "", "", "copia c.mdb nada/d.mdb",
            "2 / nada/d.mdb: O arquivo do banco de dados não pôde ser aberto."},

        {"no arguments", "", "", "", usage},
        {"an unknown command", "", "", "apaga c.mdb", usage},
        {"an unknown option", "", "", "verifica c.mdb --tudo", usage},
        {"a file too few", "", "", "copia c.mdb", usage},
        {"a file too many", "", "", "cria e.mdb d.mdb", usage},
        {"overwriting is for copies", "", "", "cria d.mdb --sobrescreve", usage},
    });
}

/// What finds or refuses something leaves all files alone.
void TstQuorelCadastro::outcomes()
{
    const auto [sql, list, command, expected] = row<QString, QByteArray, QString, QString>();
    makeC(sql);
    file(u"lista.txt"_s, list);
    const QByteArray before = le(c());
    QCOMPARE(outcome(command), expected);
    QCOMPARE(le(c()), before);
    QCOMPARE(le(path(u"lista.txt"_s)), list);
    QCOMPARE(files(), (QStringList{u"c.mdb"_s, u"lista.txt"_s}));
}

void TstQuorelCadastro::helps()
{
    QCOMPARE(run({u"--help"_s}), 0);
    QVERIFY(mErros.isEmpty() && mSaida.startsWith("Uso:\n  quorel-cadastro cria ARQUIVO\n"));
}

/// Each page in turn, but the first, which makes it no database at all.
void TstQuorelCadastro::findsNoiseInAnyPage()
{
    makeC();
    const QByteArray sound = le(c());
    const qsizetype size = plainSql(c(), u"PRAGMA page_size"_s).first().toInt();
    QVERIFY(sound.size() >= 5 * size);
    QByteArray noise(size, '\0');
    for (int i = 0; i < size; ++i)
        noise[i] = static_cast<char>(i * 31 + 7);
    for (qsizetype at = size; at < sound.size(); at += size) {
        const QByteArray noisy = QByteArray(sound).replace(at, size, noise);
        escreve(c(), noisy);
        QCOMPARE(run({u"verifica"_s, c()}), 1);
        QVERIFY2(lines().value(0).startsWith(u"dano n"_s) || lines().value(0) == kDamaged, mSaida);
        QCOMPARE(le(c()), noisy);
    }
}

void TstQuorelCadastro::badFiles_data()
{
    rows<QByteArray, QString>({
        // null bytes: there is no file
        {"empty", QByteArray(""), kEmpty},
        {"the old format", QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4000, '\0'), kJet},
        {"a few bytes", QByteArray("SQLite format 3\0", 16), kNoDatabase},
        {"a text", QByteArray("Não é um banco. ").repeated(500), kNoDatabase},
        {"missing", QByteArray(), "O arquivo do banco de dados não pôde ser aberto."},
    });
}

void TstQuorelCadastro::badFiles()
{
    const auto [bytes, told] = row<QByteArray, QString>();
    if (!bytes.isNull())
        escreve(c(), bytes);
    file(u"lista.txt"_s, kGoodList);
    for (const QStringList &job :
        {QStringList{u"conta"_s, c()}, {u"copia"_s, c(), d()}, {u"importa"_s, c(), u"lista.txt"_s}}) {
        QCOMPARE(run(job), 2);
        QVERIFY2(errors().endsWith(told + u'\n'), mErros);
        QCOMPARE(le(c()), bytes);
    }
    const int code = run({u"verifica"_s, c()});
    QVERIFY2(code == 1 || code == 2, mErros); // a file that opens and holds no database is something found
    QVERIFY(QString::fromUtf8(mSaida + mErros).contains(told));
    QCOMPARE(files().size(), bytes.isNull() ? 1 : 2); // nothing was made
}

void TstQuorelCadastro::copiesWhileAProgramWrites()
{
    makeC();
    QProcess writer;
    writer.start(QStringLiteral(QUOREL_BIN "/filho_cadastro"), {c(), u"salva"_s});
    QVERIFY(writer.waitForReadyRead());
    for (int copy = 0; copy < 3; ++copy) {
        const int least = count(c(), u"LG_LogAulas"_s).toInt();
        QCOMPARE(run({u"copia"_s, c(), d(), u"--sobrescreve"_s}), 0);
        const int most = count(c(), u"LG_LogAulas"_s).toInt();
        const QString copied = count(d(), u"LG_LogAulas"_s);
        QVERIFY2(copied.toInt() >= least && copied.toInt() <= most, qPrintable(copied));
        QCOMPARE(run({u"verifica"_s, d()}), 0);
    }
    QCOMPARE(writer.state(), QProcess::Running);
    QVERIFY(!writer.readAllStandardOutput().contains("caixa"));
    writer.kill();
    QVERIFY(writer.waitForFinished());
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
    makeRegister(d());
    QVERIFY(QFile::setPermissions(d(), QFile::permissions(d()) | QFile::WriteOther));
    leaveHalfASave(d());
    makeC();
    QCOMPARE(run({u"copia"_s, c(), d(), u"--sobrescreve"_s}), 0);
    QCOMPARE(plainSql(d(), u"SELECT AL_Nome FROM AL_Alunos"_s), QStringList(u"Genérico"_s));
    QVERIFY(QFile::permissions(d()) & QFile::WriteOther); // but who may write it
    QCOMPARE(files(), (QStringList{u"c.mdb"_s, u"d.mdb"_s}));
}

/// A shell that runs would go on in a file that has no name any more.
void TstQuorelCadastro::copyRefusesARegisterInUse()
{
    makeC();
    makeRegister(d());
    const QByteArray before = le(d());
    QProcess shell;
    shell.start(QStringLiteral(QUOREL_BIN "/filho_cadastro"), {d(), u"trava"_s, u"DEFERRED"_s}); // open, no lock held
    QVERIFY(shell.waitForReadyRead());
    QCOMPARE(outcome(u"copia c.mdb d.mdb --sobrescreve"_s),
        u"2 / d.mdb: O cadastro está em uso por outro programa desta máquina. Feche-o e copie de novo."_s);
    QCOMPARE(le(d()), before);
    QCOMPARE(files(), (QStringList{u"c.mdb"_s, u"d.mdb"_s}));
    shell.closeWriteChannel();
    QVERIFY(shell.waitForFinished());
    QCOMPARE(outcome(u"copia c.mdb d.mdb --sobrescreve"_s), u"0 / "_s);
}

void TstQuorelCadastro::copyOfADamagedRegisterIsRefused()
{
    makeC();
    QByteArray bytes = le(c());
    bytes.replace(bytes.size() - 2000, 2000, QByteArray(2000, '\x55'));
    bytes.replace(plainSql(c(), u"PRAGMA page_size"_s).first().toInt(), 200, QByteArray(200, '\x55'));
    escreve(c(), bytes);
    QCOMPARE(run({u"copia"_s, c(), d()}), 2);
    QVERIFY2(errors().contains(u"danificad"_s) || errors().contains(u"há dano"_s), mErros);
    QCOMPARE(files(), QStringList(u"c.mdb"_s));
}

QTEST_GUILESS_MAIN(TstQuorelCadastro)
#include "tst_quorel_cadastro.moc"
