#include "apoio.h"
#include "programa.h"

#include "data/pendentes.h"

#include <QFile>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// "quorel-cadastro pendentes", on real files and by real processes.
class TstPendentesComando final : public TesteDePrograma
{
    Q_OBJECT
public:
    TstPendentesComando() : TesteDePrograma(u"quorel-cadastro"_s) { }

private slots:
    void tellsDeliversAndExportsWhatWaits();
    void deliversForAllAccounts();
    void twoProgramsDeliverAtOnce();

private:
    QString c() const { return path(u"c.mdb"_s); } ///< the register
    void makeC(const QString &pupil) const; ///< with the generic rows and pupil 7
};

void TstPendentesComando::makeC(const QString &pupil) const
{
    makeRegister(c());
    plainSql(c(),
        u"INSERT INTO CL_Classes VALUES (9999, 'Genérica', 'Genérica', 'Chavema');"
        "INSERT INTO AL_Alunos VALUES (9999, 'Genérico'), (7, '%1');"
        "INSERT INTO CLxAL VALUES (9999, 9999, '2026-02-01 08:00:00', 1);"_s.arg(pupil));
}

static QString identityOf(const QString &file)
{
    return plainSql(file, u"SELECT valor FROM QR_Registro WHERE chave = 'identidade'"_s).value(0);
}

/// Rows that wait for the register c, of the pupil 7.
static void keepRows(const QString &folder, const QString &file, int count, const QString &name)
{
    qputenv("QUOREL_PENDENTES", folder.toUtf8());
    Pendentes waiting(waitingPlace().arquivo);
    for (int i = 1; i <= count; ++i)
        waiting.keep({.uuid = QString::number(i),
                         .aluno = 7,
                         .classe = 9999,
                         .data = QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7)),
                         .roteiro = i,
                         .respostas = u"Artes<disc>Cores<rot>A:"_s,
                         .cadastro = identityOf(file),
                         .nomeAluno = name},
            file);
}

void TstPendentesComando::tellsDeliversAndExportsWhatWaits()
{
    makeC(u"Bia"_s);
    keepRows(path({}), c(), 1, u"Ana"_s);
    const QString row = u"1\t04/03/26 05:06:07\tAna (7)\t9999\tArtes: Cores\t"_s;
    QCOMPARE(run({u"pendentes"_s}), 1);
    QCOMPARE(lines(), QStringList(row + c()));
    QCOMPARE(run({u"pendentes"_s, u"entrega"_s}), 1); // the code is another child's now
    QCOMPARE(lines(), QStringList(c() + u": 0 entregues, 0 de alunos apagados, 1 ficam"_s));
    QCOMPARE(run({u"pendentes"_s, u"lista"_s, u"--todas"_s}), 1);
    QCOMPARE(lines(), QStringList(row + c() + u"\to código é agora de outro aluno ou de outra classe, ou de nenhum"_s));
    QCOMPARE(outcome(u"pendentes exporta copia.db"_s), u"0 / "_s);
    QCOMPARE(plainSql(path(u"copia.db"_s), u"SELECT PE_Uuid, LG_Aluno FROM PE_Linhas"_s), QStringList(u"1|7"_s));
    QVERIFY(outcome(u"pendentes exporta copia.db"_s).endsWith(u"O arquivo de destino já existe."_s));
    QVERIFY(outcome(u"pendentes aceita 2"_s).endsWith(u"Não há aula que espera com o número 2."_s));
    QCOMPARE(outcome(u"pendentes aceita 1"_s), u"0 / "_s);
    QCOMPARE(run({u"pendentes"_s, u"entrega"_s, u"--todas"_s}), 0);
    QCOMPARE(plainSql(c(), u"SELECT LG_Aluno, LG_Data FROM LG_LogAulas"_s), QStringList(u"7|2026-03-04 05:06:07"_s));
    for (const char *words : {"pendentes apaga", "pendentes exporta", "pendentes aceita um", "pendentes lista x",
             "pendentes --tudo", "pendentes aceita 1 --todas"})
        QVERIFY2(outcome(QString::fromLatin1(words)).startsWith(u"2 / Código de saída"_s), words);
    qunsetenv("QUOREL_PENDENTES");
    QCOMPARE(run({u"verifica"_s, c()}), 0);
    QCOMPARE(mSaida.startsWith("aviso: as aulas que esperam ficam com a conta"), !waitingPlace().daMaquina);
    qputenv("QUOREL_PENDENTES", path({}).toUtf8());
}

/// The machine's task: what an account that can't write the register has kept, and nobody else's file is touched
/// unasked.
void TstPendentesComando::deliversForAllAccounts()
{
    makeC(u"Ana"_s);
    keepRows(path({}), c(), 1, u"Ana"_s);
    QVERIFY(QFile::rename(waitingPlace().arquivo, path(u"pendentes-outra.db"_s)));
    QCOMPARE(outcome(u"pendentes entrega"_s), u"0 / "_s);
    QCOMPARE(plainSql(c(), u"SELECT count(*) FROM LG_LogAulas"_s), QStringList(u"0"_s));
    QCOMPARE(run({u"pendentes"_s, u"entrega"_s, u"--todas"_s}), 0);
    QCOMPARE(lines(), QStringList(c() + u": 1 entregues, 0 de alunos apagados, 0 ficam"_s));
    QCOMPARE(plainSql(c(), u"SELECT count(*) FROM LG_LogAulas"_s), QStringList(u"1"_s));
}

void TstPendentesComando::twoProgramsDeliverAtOnce()
{
    constexpr int kMany = 1500;
    makeC(u"Ana"_s);
    keepRows(path({}), c(), kMany, u"Ana"_s);
    QProcess one;
    QProcess other;
    for (QProcess *each : {&one, &other})
        each->start(QStringLiteral(QUOREL_BIN "/quorel-cadastro"), {u"pendentes"_s, u"entrega"_s});
    for (QProcess *each : {&one, &other})
        QVERIFY(each->state() == QProcess::NotRunning || each->waitForFinished());
    run({u"pendentes"_s, u"entrega"_s}); // what one left because the other held the lock
    QCOMPARE(plainSql(c(), u"SELECT count(*), count(DISTINCT RO_Cod) FROM LG_LogAulas"_s),
        QStringList(u"%1|%1"_s.arg(kMany)));
    QCOMPARE(outcome(u"pendentes"_s), u"0 / "_s);
}

QTEST_GUILESS_MAIN(TstPendentesComando)
#include "tst_pendentes_comando.moc"
