#include "data/bd.h"

#include "data/errobd.h"
#include "data/recordset.h"
#include "data/textos.h"
#include "startup/valor.h"

#include <QFile>
#include <QLabel>
#include <QPixmap>

using namespace Qt::StringLiterals;

namespace quorel {

static bool atEnd(const RecordSet &set)
{
    return set.BOF() || set.EOF_();
}

static bool isEmptySet(const RecordSet &set)
{
    return set.BOF() && set.EOF_();
}

/// A field's value as callers want it: Null is an empty text.
static QVariant plainValue(const QVariant &value)
{
    return isNullValue(value) ? QVariant(u""_s) : value;
}

static void goToMark(RecordSet &set, const QVariant &Marcador)
{
    if (!variantText(Marcador).isEmpty())
        set.setBookmark(Marcador);
}

void BD::reportField(const ErroExecucao &erro, const QVariant &Nome, const QVariant &Alias)
{
    qint32 number = erro.numero();
    QString description = erro.descricao() + kFimLinha + u"Campo ("_s + variantText(Nome) + u')';
    Relata_Erro(Alias, number, description, u"Campo"_s);
}

QVariant BD::Campo(const QVariant &Nome, const QVariant &Alias, const QVariant &Marcador)
{
    try {
        if (!Nome.isValid() || !mAberto)
            return {};
        const auto set = resolved(Alias);
        if (atEnd(*set))
            return u""_s;
        goToMark(*set, Marcador);
        return plainValue(set->value(Nome));
    } catch (const ErroExecucao &erro) {
        reportField(erro, Nome, Alias);
        return {};
    }
}

static void showPicture(QLabel &label, const QByteArray &bytes)
{
    const QString name = u"temppic.bmp"_s; // in the current directory
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw ErroExecucao(kFalhaFigura);
    file.close();
    const QPixmap picture(name);
    file.remove();
    if (picture.isNull())
        throw ErroExecucao(kFalhaFigura);
    label.setPixmap(picture);
}

void BD::CampoImagem(QLabel &Controle, const QVariant &Nome, const QVariant &Alias, const QVariant &Marcador)
{
    try {
        if (!Nome.isValid() || !mAberto)
            return;
        const auto set = resolved(Alias);
        if (atEnd(*set))
            return;
        goToMark(*set, Marcador);
        const QByteArray bytes = set->value(Nome).toByteArray();
        if (!bytes.isEmpty())
            showPicture(Controle, bytes);
    } catch (const ErroExecucao &erro) {
        reportField(erro, Nome, Alias);
    }
}

QString BD::NomeCampo(qint16 Indice, const QVariant &Alias, const QVariant &Separador)
{
    const auto set = resolved(Alias);
    if (Indice != -1)
        return set->field(Indice).nome;
    QStringList names;
    for (int i = 0; i < set->fieldCount(); ++i)
        names << set->field(i).nome;
    return names.join(variantText(Separador));
}

static QVariant listField(const QString &name)
{
    const bool isNumber = !name.isEmpty() && name[0] >= u'0' && name[0] <= u'9';
    return isNumber ? QVariant(parteInteira(valorNumerico(name))) : QVariant(name);
}

QString BD::lista(const QVariant &Alias, const QString &Campo1, const QVariant &SeparadorLinha, const QString &Campo2,
    const QString &SeparadorCampo)
{
    const auto set = resolved(Alias);
    const QString lineEnd = variantText(SeparadorLinha);
    if (isEmptySet(*set))
        return {};
    const QVariant mark = atEnd(*set) ? QVariant() : QVariant(set->Bookmark());
    QString text;
    for (set->MoveFirst(); !set->EOF_(); set->MoveNext()) {
        if (!Campo1.isEmpty() && !Campo2.isEmpty()) {
            text += variantText(set->value(Campo1)) + SeparadorCampo + variantText(set->value(Campo2));
        } else if (!Campo1.isEmpty()) {
            text += variantText(set->value(listField(Campo1)));
        } else {
            for (int i = 0; i < set->fieldCount(); ++i)
                text += variantText(set->value(i)) + SeparadorCampo;
        }
        text += lineEnd;
    }
    text.chop(lineEnd.size());
    if (mark.isValid())
        set->setBookmark(mark);
    return text;
}

qint32 BD::Posicao(const QVariant &Alias)
{
    return resolved(Alias)->AbsolutePosition();
}

qint32 BD::PosicaoRegistroAtual(const QVariant &Alias)
{
    float position = 0; // through a single, as browsers have always read it
    ignora([&] { position = static_cast<float>(resolved(Alias)->AbsolutePosition()); });
    return position < 0 ? 0 : static_cast<qint32>(position);
}

qint32 BD::NumeroTotalDeRegistros(const QVariant &Alias)
{
    return resolved(Alias)->RecordCount();
}

bool BD::FimDeArquivo(const QVariant &Alias)
{
    return resolved(Alias)->EOF_();
}

bool BD::ComecoDeArquivo(const QVariant &Alias)
{
    return resolved(Alias)->BOF();
}

bool BD::RecordSetVazia(const QVariant &Alias)
{
    return isEmptySet(*resolved(Alias));
}

bool BD::TabelaVazia(const QVariant &Alias)
{
    bool empty = true;
    ignora([&] { empty = resolved(Alias)->RecordCount() == 0; });
    return empty;
}

void BD::move(const QVariant &Alias, const std::function<void(RecordSet &)> &guarded)
{
    reported(Alias, QString(), true, [&] { guarded(*resolved(Alias)); });
}

QVariant BD::MoveProximoRegistro(const QVariant &Alias)
{
    move(Alias, [](RecordSet &set) {
        if (!set.EOF_())
            set.MoveNext();
    });
    return {};
}

QVariant BD::MoveRegistroAnterior(const QVariant &Alias)
{
    move(Alias, [](RecordSet &set) {
        if (!set.BOF())
            set.MovePrevious();
    });
    return {};
}

QVariant BD::MoveParaComecoDeArquivo(const QVariant &Alias)
{
    move(Alias, [](RecordSet &set) {
        if (!isEmptySet(set))
            set.MoveFirst();
    });
    return {};
}

QVariant BD::MoveParaFimDeArquivo(const QVariant &Alias)
{
    move(Alias, [](RecordSet &set) {
        if (!isEmptySet(set))
            set.MoveLast();
    });
    return {};
}

void BD::Mover(qint32 Quantos, qint32 Inicio, const QVariant &Alias)
{
    reported(Alias, u"Mover"_s, true, [&] {
        const auto set = resolved(Alias);
        if (Quantos > 0)
            set->Move(Quantos, Inicio);
    });
}

QVariant BD::RetornaRegistroString(
    qint16 Linhas, const QVariant &Alias, const QVariant &SeparadorColuna, const QVariant &SeparadorLinha)
{
    QVariant text;
    // Kept: the word "Mover" is shared with the operation of that name.
    reported(Alias, u"Mover"_s, true,
        [&] { text = resolved(Alias)->GetString(Linhas, variantText(SeparadorColuna), variantText(SeparadorLinha)); });
    return text;
}

bool BD::MarcaPosicao(const QVariant &Alias)
{
    const auto set = resolved(Alias);
    if (atEnd(*set))
        return false;
    mMarca = set->Bookmark();
    return true;
}

QVariant BD::VoltaPosicao(const QVariant &Alias)
{
    reported(Alias, u"VoltaPosicao"_s, true, [&] { backToMark(*resolved(Alias)); });
    return {};
}

void BD::backToMark(RecordSet &set)
{
    if (mMarca.toInt() > 0)
        set.setBookmark(mMarca);
    else
        MoveParaComecoDeArquivo();
}

} // namespace quorel
