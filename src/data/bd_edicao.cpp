#include "data/bd.h"

#include "data/conexao.h"
#include "data/errobd.h"
#include "data/recordset.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "startup/valor.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace quorel {

void BD::RegistroAdiciona(const QVariant &Alias, bool Avisa)
{
    reported(Alias, u"RegistroAdiciona"_s, Avisa, [&] {
        const int slot = Resolve_Alias(Alias);
        if (setOf(slot)->RecordCount() == 0)
            ReAtualizaRecordSet(slot, true);
        const auto set = setOf(slot); // a box of that reading may have let another query in here
        if (!set->BOF() && !set->EOF_())
            mMarca = set->Bookmark();
        set->AddNew();
    });
}

/// A value as RegistroTroca writes it. @return false for a kind that writes nothing
static bool valueOfKind(const QVariant &Valor, qint32 Tipo, QVariant &result)
{
    const QString text = variantText(Valor);
    if (text.isEmpty() && Valor.typeId() != QMetaType::QByteArray) {
        result = u""_s;
        return true;
    }
    switch (Tipo) {
    case kTrocaComoEsta:
        result = Valor;
        return true;
    case kTrocaTexto:
        result = text;
        return true;
    case kTrocaNumero:
        result = valorNumerico(text);
        return true;
    case kTrocaLogico:
        result = convertedTo(TipoCampo::Logico, Valor);
        return true;
    default:
        return false;
    }
}

void BD::RegistroTroca(const QVariant &Campo, const QVariant &Valor, const QVariant &Alias, qint32 Tipo, bool Avisa)
{
    try {
        const auto set = resolved(Alias);
        QVariant value;
        if (valueOfKind(Valor, Tipo, value))
            set->setValue(Campo, value);
    } catch (const ErroExecucao &) {
        if (!Avisa)
            return;
        qint32 number = 0; // Kept: the reporter then shows the failure's own text, and this one is never seen
        QString description = u"RegistroTroca - "_s + variantText(Campo);
        Relata_Erro(Alias, number, description, QString());
    }
}

void BD::RegistroAtualiza(const QVariant &Alias, bool Avisa)
{
    reported(Alias, u"Registro Atualiza"_s, Avisa, [&] {
        const int slot = Resolve_Alias(Alias);
        const auto set = setOf(slot);
        if (set->EditMode() == kEdicaoEmCurso) {
            RecordSetResync(slot);
            if (set->EditMode() != kEdicaoNenhuma) {
                set->CancelUpdate();
                return;
            }
        }
        set->UpdateBatch();
    });
}

void BD::ReAtualizaRecordSet(const QVariant &Alias, bool Avisa)
{
    reported(Alias, u"Registro reAtualizaRecordSet"_s, Avisa, [&] { resolved(Alias)->Requery(); });
}

void BD::RegistroApaga(const QVariant &Alias, qint32 Afeta, bool Confirma, const QString &Mensagem)
{
    reported(Alias, u"RegistroApaga"_s, true, [&] {
        const auto set = resolved(Alias);
        const QString question = Mensagem.isEmpty() ? u"Deseja apagar o registro atual"_s : Mensagem;
        if (Confirma
            && ask({.texto = question, .titulo = u"Deletar Registro"_s, .botoes = Botoes::SimNao}) == Resposta::Nao)
            return;
        set->Delete(Afeta);
        if (!Confirma)
            return;
        if (!set->EOF_())
            set->MoveNext();
        else if (set->BOF())
            set->MoveLast();
        else
            set->MovePrevious();
    });
}

void BD::RecordSetResync(const QVariant &Alias, qint32, qint32)
{
    reported(Alias, QString(), true, [&] {
        const int slot = Resolve_Alias(Alias);
        if (slot > 0)
            setOf(slot)->Resync();
    });
}

void BD::CancelaAdicao(const QVariant &Alias, qint32)
{
    const auto set = resolved(Alias);
    if (set->EditMode() != kEdicaoInclusao)
        return;
    set->CancelUpdate();
    backToMark(*set);
}

void BD::CancelaEdicao(const QVariant &Alias, qint32)
{
    const auto set = resolved(Alias);
    if (set->EditMode() != kEdicaoEmCurso)
        return;
    set->CancelBatch();
    backToMark(*set);
}

QVariant BD::ModoEdicao(const QVariant &Alias)
{
    const auto set = resolved(Alias);
    if (set->BOF() || set->EOF_())
        return {};
    return set->EditMode();
}

void BD::RegistroInclui(const QVariant &Campo, const QVariant &Valor, const QVariant &Alias)
{
    const auto set = resolved(Alias);
    if (!variantText(Valor).isEmpty())
        set->setValue(Campo, Valor);
    else if (Valor.typeId() == QMetaType::QString)
        set->setValue(Campo, u""_s);
}

void BD::RegistroSalvaBinario(const QVariant &Campo, const QString &Arquivo, const QVariant &Alias)
{
    reported(Alias, QString(), true, [&] {
        const auto set = resolved(Alias);
        QFile file(nativePath(Arquivo));
        if (!file.open(QIODevice::ReadOnly))
            throw ErroBD(kErroArmazem, u"O arquivo não pôde ser lido."_s);
        QByteArray bytes(""); // an empty file is not Null
        bytes += file.readAll();
        if (file.error() != QFileDevice::NoError)
            throw ErroBD(kErroArmazem, u"O arquivo não pôde ser lido."_s);
        set->setValue(Campo, bytes);
    });
}

void BD::TransacaoInicio()
{
    openIfPutOff();
    connection().BeginTrans();
}

void BD::TransacaoFim()
{
    connection().CommitTrans();
    afterTransaction();
}

void BD::TransacaoCancela()
{
    connection().RollbackTrans();
    afterTransaction();
}

} // namespace quorel
