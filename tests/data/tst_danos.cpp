#include "apoio.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "data/conexao.h"
#include "data/consultas.h"
#include "data/datas.h"
#include "data/errobd.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/sistema.h"
#include "support/suporte.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <random>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

static constexpr int kPage = 4096; ///< bytes of a page of the register

/// Registers that are no registers, or damaged ones: each is told in the system's words, nothing is written by halves.
class TstDanos final : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Registro> mRegistro;
    QList<Caixa> mBoxes;
    void fill() const;
    void startUp();
    void logsARow();
    QStringList log();

private slots:
    void init();
    void cleanup();
    void badFileIsTold_data();
    void badFileIsTold();
    void directoryIsNoRegister();
    void foreignTables_data();
    void foreignTables();
    void withoutWritePermission();
    void noisyPage_data();
    void noisyPage();
    void truncated_data();
    void truncated();
};

void TstDanos::init()
{
    failOnWarnings();
    reiniciaCosturas();
    reiniciaStartup();
    mRegistro = std::make_unique<Registro>();
    mBoxes.clear();
    costuras().box = [this](const Caixa &box) {
        mBoxes << box;
        return Resposta::Ok;
    };
    gConfig.SetaCFG(u"ZETO_CAD="_s + mRegistro->path().section(u'\\', 0, -2) + u"\r\nDIRWIN=\r\n"_s);
    gClasse = 0;
}

void TstDanos::cleanup()
{
    reiniciaData();
    mRegistro.reset();
}

/// Classes, pupils, links and a log of several pages.
void TstDanos::fill() const
{
    mRegistro->sql(
        u"INSERT INTO CL_Classes VALUES (9999, 'Genérica', 'Genérica', 'Chavema'), (1, 'Quinta', 'Zé', '');"
        "INSERT INTO AL_Alunos VALUES (9999, 'Genérico'); INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (9999, 9999);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 150)"
        "INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp)"
        "SELECT 9999, 9999, printf('2026-01-01 10:%02d:%02d', i / 60, i % 60), i, 'linha ' || i || ' inteira' FROM n"_s);
}

void TstDanos::startUp()
{
    reiniciaData();
    AbreBDAlunos();
}

/// One row through the log's alias, as the shell writes it.
void TstDanos::logsARow()
{
    ignora([] {
        gBD->Records_Set(consultas::logDoAluno(9999, 9999), u"RSLog"_s);
        gBD->TransacaoInicio();
        gBD->RegistroAdiciona(u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Aluno"_s, 9999, u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Classe"_s, 9999, u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Data"_s, wallClock({2026, 11, 24}, {10, 0}), u"RSLog"_s);
        gBD->RegistroTroca(u"RO_Cod"_s, 777, u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Resp"_s, u"linha 777 inteira"_s, u"RSLog"_s);
        gBD->RegistroAtualiza(u"RSLog"_s);
        gBD->TransacaoFim();
        gBD->ReAtualizaRecordSet(u"RSLog"_s);
    });
}

/// The log's rows as far as they can be read: codes and answers.
QStringList TstDanos::log()
{
    QStringList rows;
    ignora([&] {
        gBD->Source(mRegistro->path());
        gBD->Records_Set(u"Select RO_Cod, LG_Resp From LG_LogAulas"_s, u"RS"_s);
        rows = gBD->lista(u"RS"_s, u"RO_Cod"_s, u"\n"_s, u"LG_Resp"_s, u"|"_s).split(u'\n', Qt::SkipEmptyParts);
    });
    return rows;
}

static const QString kDamaged = u"O arquivo do banco de dados está danificado."_s;
static const QString kNoDatabase = u"O arquivo não é um banco de dados, ou está danificado."_s;

void TstDanos::badFileIsTold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const QString jet =
        u"O arquivo do banco de dados está no formato antigo (Jet) e não pode ser aberto. Crie um cadastro "
        "novo com o programa quorel-cadastro."_s;
    QTest::newRow("empty") << QByteArray() << u"O arquivo do banco de dados está vazio."_s;
    QTest::newRow("a byte, which the store itself may leave")
        << QByteArray("x") << u"O arquivo do banco de dados está vazio."_s;
    QTest::newRow("two bytes") << QByteArray("xy") << kNoDatabase;
    QTest::newRow("shorter than a header") << QByteArray(99, '\0') << kNoDatabase;
    QTest::newRow("zeros") << QByteArray(2 * kPage, '\0') << kNoDatabase;
    QTest::newRow("a text") << QByteArray("ZETO_CAD=C:\\Cadastros\r\n").repeated(300) << kNoDatabase;
    QTest::newRow("the old format") << QByteArray("\0\1\0\0Standard Jet DB\0\1", 21) + QByteArray(kPage, '\0') << jet;
    QTest::newRow("its successor") << QByteArray("\0\1\0\0Standard ACE DB\0\2", 21) + QByteArray(kPage, '\0') << jet;
}

void TstDanos::badFileIsTold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    escreve(mRegistro->native(), bytes);
    startUp();
    QCOMPARE(mBoxes, QList<Caixa>{(Caixa{u"-2147467259 "_s + text, u"AbreBDAlunos"_s, Icone::Informacao})});
    QVERIFY(!gBD->Source());
    QCOMPARE(le(mRegistro->native()), bytes); // neither repaired nor replaced
}

void TstDanos::directoryIsNoRegister()
{
    QFile::remove(mRegistro->native());
    QDir().mkpath(mRegistro->native() + u"/dentro"_s);
    startUp();
    QCOMPARE(mBoxes.value(0).texto, u"Arquivo de Cadastros dos alunos não foi localizado"_s);
    QCOMPARE(failureOf([&] { gBD->Source(mRegistro->path()); }), int(kErroArmazem));
    QVERIFY(QDir(mRegistro->native()).exists(u"dentro"_s));
}

void TstDanos::foreignTables_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("text"); // of the first box
    QTest::newRow("no tables")
        << u"DROP TABLE CL_Classes; DROP TABLE AL_Alunos; DROP TABLE CLxAL; DROP TABLE LG_LogAulas"_s
        << u"Select * From CL_Classes\r\n-2147217865\tNão existe a tabela ou consulta \"CL_Classes\"."_s;
    QTest::newRow("one missing") << u"DROP TABLE CLxAL"_s
                                 << u"Select * From CLxAL\r\n-2147217865\tNão existe a tabela ou consulta \"CLxAL\"."_s;
    QTest::newRow("a column missing")
        << u"ALTER TABLE CL_Classes RENAME COLUMN CL_Prof TO Outra"_s
        << u"O item não foi encontrado na coleção com o nome ou número pedido.\r\nO nome do campo não esta na tabela !!!"_s;
    QTest::newRow("a table that is a view")
        << u"DROP TABLE AL_Alunos; CREATE VIEW AL_Alunos AS SELECT 1 AS AL_Cod, 'x' AS AL_Nome"_s
        << u"O conjunto de registros só pode ser lido."_s;
}

void TstDanos::foreignTables()
{
    QFETCH(QString, sql);
    QFETCH(QString, text);
    mRegistro->sql(sql);
    startUp();
    QVERIFY(!mBoxes.isEmpty());
    QCOMPARE(mBoxes[0].texto, text);
}

/// The superuser may write everything, so for him another user's process plays this test.
void TstDanos::withoutWritePermission()
{
    fill();
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
                u"withoutWritePermission"_s});
        QVERIFY(other.waitForFinished());
        QCOMPARE(other.exitStatus(), QProcess::NormalExit);
        QCOMPARE(other.exitCode(), 0);
        return;
    }
    const QByteArray bytes = le(mRegistro->native());
    startUp();
    QCOMPARE(mBoxes, QList<Caixa>()); // it has its generic rows: nothing to write
    logsARow();
    QCOMPARE(mBoxes,
        QList<Caixa>{(Caixa{u"O banco de dados só pode ser lido; nada foi gravado."_s, u"RSLog - Registro Atualiza"_s,
            Icone::Informacao})});
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"RSLog"_s), 150);
    reiniciaData();
    QCOMPARE(le(mRegistro->native()), bytes);
}

static QByteArray noise(quint32 seed)
{
    std::mt19937 generator(seed);
    QByteArray bytes;
    for (int i = 0; i < kPage; ++i)
        bytes += static_cast<char>(generator());
    return bytes;
}

void TstDanos::noisyPage_data()
{
    QTest::addColumn<int>("page"); // from 0
    for (int page = 0; page < 16; ++page)
        QTest::addRow("page %d", page + 1) << page;
}

static bool isKnown(const Caixa &box)
{
    return box.texto.endsWith(kDamaged) || box.texto.endsWith(kNoDatabase);
}

/// Start-up and one row of the log on a register with one page overwritten. What can still be read is whole rows.
void TstDanos::noisyPage()
{
    QFETCH(int, page);
    fill();
    QByteArray bytes = le(mRegistro->native());
    const int pages = static_cast<int>(bytes.size() / kPage);
    QVERIFY2(pages >= 10 && pages <= 16, qPrintable(QString::number(pages)));
    const int damaged = page % pages; // a second noise for some
    bytes.replace(damaged * kPage, kPage, noise(static_cast<quint32>(page)));
    escreve(mRegistro->native(), bytes);
    startUp();
    if (gBD->Source())
        logsARow();
    for (const Caixa &box : mBoxes)
        QVERIFY2(isKnown(box), qPrintable(box.titulo + u": "_s + box.texto));
    const bool told = !mBoxes.isEmpty();
    reiniciaData();
    const QStringList rows = log();
    for (const QString &row : rows) {
        const QString code = row.section(u'|', 0, 0);
        QCOMPARE(row, code + u"|linha "_s + code + u" inteira"_s);
    }
    if (!told)
        QCOMPARE(rows.size(), 151); // a page that nobody needed: the row is in
}

void TstDanos::truncated_data()
{
    QTest::addColumn<int>("size"); // bytes left; below 0: taken off the end
    QTest::newRow("a byte less") << -1;
    QTest::newRow("a page less") << -kPage;
    QTest::newRow("half a page less") << -kPage / 2;
    QTest::newRow("three pages") << 3 * kPage;
    QTest::newRow("one page") << kPage;
    QTest::newRow("half of the first page") << kPage / 2;
    QTest::newRow("the header alone") << 100;
}

void TstDanos::truncated()
{
    QFETCH(int, size);
    fill();
    const QByteArray whole = le(mRegistro->native());
    const QByteArray bytes = size < 0 ? whole.chopped(-size) : whole.first(size);
    escreve(mRegistro->native(), bytes);
    startUp();
    if (gBD->Source())
        logsARow();
    QVERIFY(!mBoxes.isEmpty());
    for (const Caixa &box : mBoxes)
        QVERIFY2(isKnown(box), qPrintable(box.titulo + u": "_s + box.texto));
    reiniciaData();
    QCOMPARE(le(mRegistro->native()), bytes);
}

QTEST_MAIN(TstDanos)
#include "tst_danos.moc"
