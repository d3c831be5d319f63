#include "tools/cadastro_pendentes.h"

#include "data/bd.h"
#include "data/datas.h"
#include "data/entrega.h"
#include "data/errobd.h"
#include "data/pendentes.h"
#include "platform/caminho.h"

#include <QDir>
#include <QFileInfo>

#include <limits>
#include <memory>
#include <set>
#include <vector>

namespace quorel::cadastro {

using namespace Qt::StringLiterals;

namespace {

constexpr int kAll = std::numeric_limits<int>::max();
constexpr int kNoSense = -1;

/// The files to work on: this account's, or all in its folder that can be read.
QStringList files(bool todas)
{
    const QFileInfo own(waitingPlace().arquivo);
    if (!todas)
        return {own.filePath()};
    QStringList found;
    for (const QFileInfo &each : QDir(own.path()).entryInfoList({u"pendentes-*.db"_s}, QDir::Files)) {
        if (!each.isSymLink())
            found << each.filePath();
    }
    return found;
}

QString whose(const QString &name, qint32 code)
{
    return name.isEmpty() ? QString::number(code) : name + u" (%1)"_s.arg(code);
}

void listFile(const QString &file, QTextStream &saida)
{
    Pendentes waiting(file);
    for (const LinhaEspera &each : waiting.rows(0, kAll, true)) {
        QStringList cells{QString::number(each.ordem), dateText(each.linha.data),
            whose(each.linha.nomeAluno, each.linha.aluno), whose(each.linha.nomeClasse, each.linha.classe),
            each.linha.respostas.section("<rot>"_L1, 0, 0).replace("<disc>"_L1, ": "_L1), each.caminho};
        if (!each.motivo.isEmpty())
            cells << each.motivo;
        saida << cells.join(u'\t') << u'\n';
    }
    for (const QString &name : waiting.setAside())
        saida << u"arquivo danificado, posto de lado: "_s << name << u'\n';
}

/// Each register that rows of a file were looked for at gets what is its.
void deliverFile(const QString &file, QTextStream &saida)
{
    Pendentes waiting(file);
    std::set<QString> registers;
    for (const LinhaEspera &each : waiting.rows(0, kAll, true))
        registers.insert(each.caminho);
    for (const QString &each : registers) {
        try {
            BD bank; // knows how a register is named
            bank.Source(backslashPath(each));
            const Entregue done = bank.deliverFrom(waiting);
            saida << each
                  << u": %1 entregues, %2 de alunos apagados, %3 ficam\n"_s.arg(done.entraram)
                         .arg(done.apagadas)
                         .arg(done.ficaram);
        } catch (const ErroExecucao &erro) {
            saida << each << u": "_s << erro.descricao() << u'\n';
        }
    }
}

qint64 left(const QStringList &all)
{
    qint64 count = 0;
    for (const QString &each : all)
        count += Pendentes(each).count();
    return count;
}

} // namespace

int pendentes(const QStringList &palavras, bool todas, QTextStream &saida)
{
    const QString verb = palavras.value(0, u"lista"_s);
    const QStringList all = files(todas);
    const bool takesWord = verb == "exporta"_L1 || verb == "aceita"_L1;
    if (palavras.size() > (takesWord ? 2 : 1) || (takesWord && (palavras.size() != 2 || todas)))
        return kNoSense;
    if (verb == "lista"_L1 || verb == "entrega"_L1) {
        for (const QString &each : all)
            (verb == "lista"_L1 ? listFile : deliverFile)(each, saida);
        return left(all) == 0 ? 0 : 1;
    }
    Pendentes own(all.first());
    if (verb == "exporta"_L1) {
        own.exportTo(nativePath(palavras[1]));
        return 0;
    }
    bool isNumber = false;
    const qint64 row = palavras.value(1).toLongLong(&isNumber);
    if (verb != "aceita"_L1 || !isNumber)
        return kNoSense;
    if (!own.accept(row))
        throw ErroBD(kErroArmazem, u"Não há aula que espera com o número %1."_s.arg(row));
    return 0;
}

} // namespace quorel::cadastro
