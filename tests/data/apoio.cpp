#include "apoio.h"

#include "data/identidade.h"
#include "data/schema.h"
#include "platform/costuras.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <sqlite3.h>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace quorel::teste {

const QString kTresClasses =
    u"INSERT INTO CL_Classes VALUES (1, 'a', 'x', ''), (2, 'b', 'x', ''), (3, 'c', 'y', '');"_s;

static void check(sqlite3 *db, int code, const QByteArray &sql)
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        qFatal("plain SQL failed: %s: %s", sqlite3_errmsg(db), sql.constData());
}

QStringList plainSql(const QString &native, const QString &sql)
{
    sqlite3 *raw = nullptr;
    check(raw, sqlite3_open(native.toUtf8().constData(), &raw), "open");
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> db(raw, sqlite3_close);
    sqlite3_busy_timeout(raw, 10000);
    check(raw, sqlite3_exec(raw, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr), "synchronous"); // for speed
    QStringList rows;
    const QByteArray text = sql.toUtf8();
    const char *rest = text.constData();
    while (*rest) {
        sqlite3_stmt *stmt = nullptr;
        check(raw, sqlite3_prepare_v2(raw, rest, -1, &stmt, &rest), text);
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> guard(stmt, sqlite3_finalize);
        int code = SQLITE_DONE;
        while (stmt && (code = sqlite3_step(stmt)) == SQLITE_ROW) {
            QStringList cells;
            for (int i = 0; i < sqlite3_column_count(stmt); ++i) {
                const auto *bytes = static_cast<const char *>(sqlite3_column_blob(stmt, i));
                const bool null = sqlite3_column_type(stmt, i) == SQLITE_NULL;
                cells << (null ? u"NULL"_s : QString::fromUtf8(bytes, sqlite3_column_bytes(stmt, i)));
            }
            rows << cells.join(u'|');
        }
        check(raw, code, text);
    }
    return rows;
}

void makeRegister(const QString &native)
{
    QFile::remove(native);
    plainSql(native, QString::fromUtf8(registerSchema() + ownSchema()));
    plainSql(native,
        u"INSERT INTO QR_Registro VALUES ('identidade', '%1'), ('versao', '%2')"_s.arg(
            QUuid::createUuid().toString(QUuid::WithoutBraces), QString::number(kVersaoCadastro)));
}

Registro::Registro(const QString &rows)
    : mNative(QDir::tempPath() + u'/' + QUuid::createUuid().toString(QUuid::WithoutBraces) + u"/Cadastros.mdb"_s)
{
    escreve(mNative, {});
    makeRegister(mNative);
    sql(rows);
    qputenv("QUOREL_PENDENTES", QFile::encodeName(QFileInfo(mNative).path() + u"/espera"_s));
}

void Registro::nothingWaits() const
{
    qputenv("QUOREL_PENDENTES", QFile::encodeName(mNative + u"/espera"_s));
}

QString Registro::native() const
{
    return mNative;
}

QString Registro::path() const
{
    return barras(mNative);
}

void Registro::open() const
{
    reiniciaData();
    gBD->Source(path());
}

TesteBD::TesteBD(const QString &rows, const QString &query) : mRows(rows), mQuery(query) { }

static QString line(const Caixa &box)
{
    const QString mark = box.botoes == Botoes::SimNao ? u"? "_s
        : box.icone == Icone::Critico                 ? u"! "_s
        : box.icone == Icone::Informacao              ? u"i "_s
                                                      : QString();
    return mark + box.titulo + u": "_s + QString(box.texto).replace("\r\n"_L1, "/"_L1);
}

void TesteBD::init()
{
    failOnWarnings();
    reiniciaCosturas();
    mBoxes.clear();
    mSim = Resposta::Sim;
    costuras().box = [this](const Caixa &box) {
        mBoxes << line(box);
        return box.botoes == Botoes::SimNao ? mSim : Resposta::Ok;
    };
    mRegistro = std::make_unique<Registro>(mRows);
    mRegistro->open();
    if (mQuery.isEmpty())
        return;
    gBD->Records_Set(mQuery, u"RS"_s);
    mSet = gBD->GetRecordSet(u"RS"_s);
}

void TesteBD::cleanup()
{
    mSet.reset();
    gBD.reset();
    mRegistro.reset();
    QCOMPARE(told(), QString());
}

static QString classesOf(const Registro &registro)
{
    return registro.sql(u"SELECT CL_Cod || coalesce(CL_Nome, '-') FROM CL_Classes ORDER BY CL_Cod"_s).join(u' ');
}

QString TesteBD::play(const QString &steps) const
{
    return teste::play(wordsOn(*mSet, *mRegistro), steps);
}

QString TesteBD::state() const
{
    return stateOf(*mSet);
}

QString TesteBD::outcome(const QString &steps)
{
    const QString before = classesOf(*mRegistro);
    QString given, failure;
    try {
        given = play(steps);
    } catch (const ErroExecucao &erro) {
        failure = u"; fails "_s + QString::number(erro.numero());
    }
    QString all =
        (mSet->isOpen() ? state() : u"closed"_s) + (given.isNull() ? QString() : u"; gives "_s + given) + failure;
    for (const QString &box : told().split(u'\n', Qt::SkipEmptyParts))
        all += u"; told "_s + box;
    const QString after = inFile();
    return all + (after == before ? QString() : u"; file "_s + after);
}

void TesteBD::plays()
{
    const auto [steps, expected] = row<QString, QString>();
    QCOMPARE(outcome(steps), expected);
}

void TesteBD::plays(const Palavras &words)
{
    const auto [steps, expected] = row<QString, QString>();
    QString given;
    try {
        given = teste::play(words, steps);
    } catch (const ErroExecucao &erro) {
        given = u"fails %1"_s.arg(erro.numero());
    }
    QCOMPARE(given.isNull() ? u"nothing"_s : given, expected);
}

QString TesteBD::told()
{
    return std::exchange(mBoxes, {}).join(u'\n');
}

QString TesteBD::inFile()
{
    mSet.reset();
    gBD.reset();
    return classesOf(*mRegistro);
}

QString TesteBD::inFile(const QString &sql)
{
    mSet.reset();
    gBD.reset();
    return mRegistro->sql(sql).join(u'\n');
}

} // namespace quorel::teste
