// A second program on a register, for the tests:
// filho_cadastro CADASTRO grava LINHAS | registra NÚMERO | salva | cuida | trava COMANDO | abre
// grava: that many log rows. registra: delivers, then log rows from that number on, without end. cuida: copies and
// checks, without end. QUOREL_LENTO of the environment: microseconds before a page is read.
// salva: class and log row in turn, numbered onwards, without end. trava: runs BEGIN with
// that word (SHARED: reads) and holds the lock until its input ends. abre: waits for a line, then makes what every
// register holds, as a start does. Each finished step is a line; a box is a line
// "caixa: …".
#include "apoio.h"
#include "disco_falho.h"
#include "gravacoes.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "data/manutencao.h"
#include "platform/caminho.h"
#include "platform/costuras.h"

#include <QCoreApplication>

#include <sqlite3.h>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

static void tell(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

static void writeRows(int count)
{
    for (int i = 1; i <= count; ++i)
        logRow(i);
    tell(u"fim"_s);
}

static void logWithoutEnd(int from)
{
    gBD->deliverWaitingRows();
    for (int i = from;; ++i) {
        logRow(i);
        tell(QString::number(i));
    }
}

/// Copies to a slow disk and checks, again and again.
static void careWithoutEnd(const QString &native)
{
    for (;;) {
        try {
            copyRegister(backslashPath(native), backslashPath(native + u".copia"_s), true);
            registerFindings(backslashPath(native));
            tell(u"cuidado"_s);
        } catch (const ErroExecucao &erro) {
            tell(u"falhou: "_s + erro.descricao());
        }
    }
}

static void saveWithoutEnd(const QString &native)
{
    openClasses();
    for (int i = plainSql(native, u"SELECT coalesce(max(RO_Cod), 0) FROM LG_LogAulas"_s).first().toInt() + 1;; ++i) {
        saveFirstClass(QString::number(i));
        logRow(i);
        tell(QString::number(i));
    }
}

static int holdLock(const QString &native, const QString &kind)
{
    sqlite3 *db = nullptr;
    if (sqlite3_open(native.toUtf8().constData(), &db) != SQLITE_OK)
        return 2;
    const QString begin = kind == "SHARED"_L1 ? u"BEGIN; SELECT * FROM CL_Classes"_s : u"BEGIN "_s + kind;
    if (sqlite3_exec(db, qPrintable(begin), nullptr, nullptr, nullptr) != SQLITE_OK)
        return 2;
    tell(u"travado"_s);
    while (std::getchar() != EOF) { }
    return sqlite3_close(db) == SQLITE_OK ? 0 : 2;
}

static int startOnIt()
{
    tell(u"pronto"_s);
    std::getchar();
    CriaGenericos();
    reiniciaData();
    tell(u"fim"_s);
    return 0;
}

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const QString &native = words.at(1);
    DiscoFalho disk;
    disk.readLate(qEnvironmentVariableIntValue("QUOREL_LENTO"));
    if (words.at(2) == "trava"_L1)
        return holdLock(native, words.at(3));
    costuras().box = [](const Caixa &box) {
        tell(u"caixa: "_s + box.titulo + u": "_s + box.texto);
        return Resposta::Ok;
    };
    if (words.at(2) == "cuida"_L1)
        careWithoutEnd(native);
    reiniciaData();
    gBD->Source(backslashPath(native));
    if (words.at(2) == "salva"_L1)
        saveWithoutEnd(native);
    if (words.at(2) == "abre"_L1)
        return startOnIt();
    if (words.at(2) == "registra"_L1)
        logWithoutEnd(words.at(3).toInt());
    writeRows(words.at(3).toInt());
    reiniciaData();
    return 0;
}
