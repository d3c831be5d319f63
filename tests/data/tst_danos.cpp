#include "apoio.h"
#include "gravacoes.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "data/pendentes.h"
#include "lessons/andamento.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/sistema.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <random>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

static constexpr int kPage = 4096; ///< bytes of a page of the register

static const QString kEmpty = u"O arquivo do banco de dados está vazio."_s;
static const QString kDamaged = u"O arquivo do banco de dados está danificado."_s;
static const QString kNoDatabase = u"O arquivo não é um banco de dados, ou está danificado."_s;
static const QString kJet =
    u"O arquivo do banco de dados está no formato antigo (Jet) e não pode ser aberto. Crie um cadastro "
    "novo com o programa quorel-cadastro."_s;

/// Registers that are no registers, or damaged ones: each is told in the system's words, nothing is written by halves.
/// There are classes, pupils, links and a log of several pages.
class TstDanos final : public TesteBD
{
    Q_OBJECT
public:
    TstDanos()
        : TesteBD(u"INSERT INTO CL_Classes VALUES (9999, 'Genérica', 'Genérica', 'Chavema'), (1, 'Quinta', 'Zé', '');"
                  "INSERT INTO AL_Alunos VALUES (9999, 'Genérico'); INSERT INTO CLxAL VALUES (9999, 9999, NULL, 1);"
                  "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 150)"
                  "INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) SELECT 9999, 9999, "
                  "printf('2026-01-01 10:%02d:%02d', i / 60, i % 60), i, 'linha ' || i || ' inteira' FROM n"_s,
            {})
    { }

private slots:
    void init();
    void badFileIsTold_data();
    void badFileIsTold();
    void directoryIsNoRegister();
    void foreignTables_data();
    void foreignTables();
    void withoutWritePermission_data();
    void withoutWritePermission();
    void noisyPage_data();
    void noisyPage();
    void truncated_data();
    void truncated();

private:
    void startUp();
    QStringList used(const QByteArray &bytes, bool savesAClass);
    QStringList readLog() const;
    bool mWaits = false; ///< the row that used() logged
};

void TstDanos::init()
{
    TesteBD::init();
    reiniciaData();
    reiniciaStartup();
    reiniciaLessons();
    gConfig.SetaCFG(u"ZETO_CAD="_s + mRegistro->path().section(u'\\', 0, -2) + u"\r\nDIRWIN=\r\n"_s);
    gClasse = 0;
}

void TstDanos::startUp()
{
    reiniciaData();
    AbreBDAlunos();
}

/// Start, a row of the log and a class, as far as it goes, on a register with these bytes. @return the boxes
QStringList TstDanos::used(const QByteArray &bytes, bool savesAClass)
{
    escreve(mRegistro->native(), bytes);
    mWaits = false;
    startUp();
    if (gBD->Source()) {
        ignora([] { logRow(777); });
        if (savesAClass)
            ignora([] { saveNewClass(u"Nova"_s); });
        mWaits = gBD->waitingRows().count() > 0;
    }
    reiniciaData();
    return told().split(u'\n', Qt::SkipEmptyParts);
}

void TstDanos::badFileIsTold_data()
{
    rows<QByteArray, QString>({
        {"empty", "", kEmpty},
        {"a byte, which the store itself may leave", "x", kEmpty},
        {"two bytes", "xy", kNoDatabase},
        {"shorter than a header", QByteArray(99, '\0'), kNoDatabase},
        {"zeros", QByteArray(2 * kPage, '\0'), kNoDatabase},
        {"a text", QByteArray("ZETO_CAD=C:\\Cadastros\r\n").repeated(300), kNoDatabase},
        {"the old format", QByteArray("\0\1\0\0Standard Jet DB\0\1", 21) + QByteArray(kPage, '\0'), kJet},
        {"its successor", QByteArray("\0\1\0\0Standard ACE DB\0\2", 21) + QByteArray(kPage, '\0'), kJet},
    });
}

void TstDanos::badFileIsTold()
{
    const auto [bytes, text] = row<QByteArray, QString>();
    escreve(mRegistro->native(), bytes);
    startUp();
    QCOMPARE(told().section(u"/O programa segue sem o cadastro"_s, 0, 0), u"i AbreBDAlunos: -2147467259 "_s + text);
    QVERIFY(!gBD->Source());
    QCOMPARE(le(mRegistro->native()), bytes); // neither repaired nor replaced
}

void TstDanos::directoryIsNoRegister()
{
    QFile::remove(mRegistro->native());
    QDir().mkpath(mRegistro->native() + u"/dentro"_s);
    startUp();
    QVERIFY(told().endsWith(u": Arquivo de Cadastros dos alunos não foi localizado"_s));
    QCOMPARE(failureOf([&] { gBD->Source(mRegistro->path()); }), int(kErroArmazem));
    QVERIFY(QDir(mRegistro->native()).exists(u"dentro"_s));
}

void TstDanos::foreignTables_data()
{
    const QString missing = u"Select * From %1/-2147217865\tNão existe a tabela ou consulta \"%1\"."_s;
    rows<QString, QString>({
        // the text of the first box
        {"no tables", "DROP TABLE CL_Classes; DROP TABLE AL_Alunos; DROP TABLE CLxAL; DROP TABLE LG_LogAulas",
            missing.arg(u"CL_Classes"_s)},
        {"one missing", "DROP TABLE CLxAL", missing.arg(u"CLxAL"_s)},
        {"a column missing", "DELETE FROM CL_Classes; ALTER TABLE CL_Classes RENAME COLUMN CL_Prof TO Outra",
            "O item não foi encontrado na coleção com o nome ou número pedido./O nome do campo não esta na tabela !!!"},
        {"a table that is a view", "DROP TABLE AL_Alunos; CREATE VIEW AL_Alunos AS SELECT 1 AS AL_Cod, 'x' AS AL_Nome",
            "O conjunto de registros só pode ser lido."},
    });
}

void TstDanos::foreignTables()
{
    const auto [sql, text] = row<QString, QString>();
    mRegistro->sql(sql);
    startUp();
    const QString first = told().section(u'\n', 0, 0);
    QVERIFY2(first.endsWith(u": "_s + text), qPrintable(first));
}

/// Leaves a register as a machine does that is switched off in the middle of a write.
static void breakOffAWrite(const QString &native)
{
    sqlite3 *db = nullptr;
    QCOMPARE(sqlite3_open(native.toUtf8().constData(), &db), SQLITE_OK);
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> closes(db, sqlite3_close);
    const char *sql = "PRAGMA cache_size=1; BEGIN; UPDATE LG_LogAulas SET LG_Resp = LG_Resp || hex(zeroblob(3000))";
    QCOMPARE(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    const QByteArray bytes = le(native);
    const QByteArray journal = le(native + u"-journal"_s);
    QCOMPARE(sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    escreve(native, bytes);
    escreve(native + u"-journal"_s, journal);
}

void TstDanos::withoutWritePermission_data()
{
    rows<bool>({{"whole", false}, {"a write broken off", true}});
}

/// The superuser may write everything, so for him another user's process plays this test.
void TstDanos::withoutWritePermission()
{
    const auto [broken] = row<bool>();
    if (broken)
        breakOffAWrite(mRegistro->native());
    const auto unwritten = impedeEscrita(mRegistro->native());
    if (!unwritten) {
        QTemporaryDir home(u"/tmp/quorel-XXXXXX"_s);
        QVERIFY(QFile::setPermissions(home.path(), QFile::Permissions::fromInt(0x7777)));
        QProcess other;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, home.path());
        environment.insert(u"XDG_RUNTIME_DIR"_s, home.filePath(u"run"_s));
        other.setProcessEnvironment(environment);
        other.setProcessChannelMode(QProcess::ForwardedChannels);
        other.start(u"setpriv"_s,
            {u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s, QCoreApplication::applicationFilePath(),
                u"withoutWritePermission:"_s + rowName()});
        QVERIFY(other.waitForFinished());
        QCOMPARE(other.exitStatus(), QProcess::NormalExit);
        QCOMPARE(other.exitCode(), 0);
        return;
    }
    const QByteArray bytes = le(mRegistro->native());
    startUp();
    if (broken) {
        const QString text = u"O banco de dados guarda uma gravação interrompida e aqui só pode ser lido. "
                             "Abra-o uma vez onde possa ser gravado."_s;
        QCOMPARE(told().section(u"/O programa segue sem o cadastro"_s, 0, 0), u"i AbreBDAlunos: -2147467259 "_s + text);
        return;
    }
    QCOMPARE(told(), u""_s); // it has its generic rows: nothing to write
    logRow(777);
    QCOMPARE(told(), u""_s);
    QCOMPARE(gBD->waitingRows().count(), 1);
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"RSLog"_s), 150);
    reiniciaData();
    QCOMPARE(le(mRegistro->native()), bytes);
}

/// All that may be told of damage; the last two of a table that the start could not open.
static bool isKnown(const QString &box)
{
    static const QStringList known{kDamaged, kNoDatabase, u"Não há conexão aberta com o banco de dados."_s,
        u"A operação não é permitida quando o objeto está fechado."_s, u"a Primeira Tabela da Lista"_s};
    return std::ranges::any_of(known, [&](const QString &end) { return box.contains(end); });
}

static QByteArray noise(quint32 seed)
{
    std::mt19937 generator(seed);
    QByteArray bytes;
    for (int i = 0; i < kPage; ++i)
        bytes += static_cast<char>(generator());
    return bytes;
}

/// What can be read of the log.
QStringList TstDanos::readLog() const
{
    QStringList log;
    ignora([&] {
        gBD->Source(mRegistro->path());
        gBD->Records_Set(u"Select RO_Cod, LG_Resp From LG_LogAulas"_s, u"RS"_s);
        log = gBD->lista(u"RS"_s, u"RO_Cod"_s, u"\n"_s, u"LG_Resp"_s, u"|"_s).split(u'\n', Qt::SkipEmptyParts);
    });
    return log;
}

void TstDanos::noisyPage_data()
{
    QTest::addColumn<int>("page"); // from 0
    for (int page = 0; page < 16; ++page)
        QTest::addRow("page %d", page + 1) << page;
}

/// What can still be read of the log is whole rows.
void TstDanos::noisyPage()
{
    QFETCH(int, page);
    QByteArray bytes = le(mRegistro->native());
    const int pages = static_cast<int>(bytes.size() / kPage);
    QVERIFY2(pages >= 10 && pages <= 16, qPrintable(QString::number(pages)));
    bytes.replace(page % pages * kPage, kPage, noise(static_cast<quint32>(page))); // a second noise for some
    const QStringList boxes = used(bytes, true);
    for (const QString &box : boxes)
        QVERIFY2(isKnown(box), qPrintable(box));
    const QStringList log = readLog();
    const bool tellsWhoReads = !told().isEmpty();
    for (const QString &row : log) {
        const QString code = row.section(u'|', 0, 0);
        QCOMPARE(row, code == "777"_L1 ? u"777|<disc>Rota<rot>A:E:"_s : code + u"|linha "_s + code + u" inteira"_s);
    }
    if (boxes.isEmpty())
        QVERIFY(mWaits || tellsWhoReads || log.size() == 151); // a page that nobody needed: the row is in
}

void TstDanos::truncated_data()
{
    rows<int>({
        // bytes left; below 0: taken off the end
        {"a byte less", -1},
        {"a page less", -kPage},
        {"half a page less", -kPage / 2},
        {"three pages", 3 * kPage},
        {"one page", kPage},
        {"half of the first page", kPage / 2},
        {"the header alone", 100},
    });
}

void TstDanos::truncated()
{
    const auto [size] = row<int>();
    const QByteArray whole = le(mRegistro->native());
    const QByteArray bytes = size < 0 ? whole.chopped(-size) : whole.first(size);
    const QStringList boxes = used(bytes, false);
    for (const QString &box : boxes)
        QVERIFY2(isKnown(box), qPrintable(box));
    if (mWaits || !boxes.isEmpty())
        QCOMPARE(le(mRegistro->native()), bytes);
    else // a row went in where nothing is missing
        QVERIFY(readLog().contains(u"777|<disc>Rota<rot>A:E:"_s) || !told().isEmpty());
}

QTEST_MAIN(TstDanos)
#include "tst_danos.moc"
