#include "data/recordset.h"

#include "data/avaliador.h"
#include "data/errobd.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

void RecordSet::stand(Lugar lugar, qsizetype place)
{
    mLugar = lugar;
    mPonto = place;
    emit currentChanged();
}

void RecordSet::standFrom(qsizetype place)
{
    while (place < placeCount() && deleted(rowAt(place)))
        ++place;
    stand(place < placeCount() ? Lugar::Linha : Lugar::Fim, place);
}

void RecordSet::standUpTo(qsizetype place)
{
    while (place >= 0 && deleted(rowAt(place)))
        --place;
    stand(place >= 0 ? Lugar::Linha : Lugar::Inicio, place);
}

void RecordSet::setBookmark(const QVariant &marca)
{
    requireOpen();
    saveEdit();
    const qsizetype row = marca.toLongLong() - 1;
    qsizetype place = row;
    if (!mComoLidas)
        place = std::ranges::find(mOrdem, row) - mOrdem.begin();
    const bool leads = row >= 0 && place < placeCount() && !deleted(row);
    standFrom(leads ? place : 0);
}

void RecordSet::MoveFirst()
{
    const bool nothing = BOF() && EOF_();
    if (nothing)
        throw ErroBD(kErroSemRegistro);
    saveEdit();
    standFrom(0);
}

void RecordSet::MoveLast()
{
    const bool nothing = BOF() && EOF_();
    if (nothing)
        throw ErroBD(kErroSemRegistro);
    saveEdit();
    standUpTo(placeCount() - 1);
}

void RecordSet::MoveNext()
{
    if (EOF_())
        throw ErroBD(kErroSemRegistro);
    saveEdit();
    if (mLugar == Lugar::Inicio)
        standFrom(0);
    else // an added record stands behind the last row
        standFrom(mLugar == Lugar::Novo ? placeCount() : mPonto + 1);
}

void RecordSet::MovePrevious()
{
    if (BOF())
        throw ErroBD(kErroSemRegistro);
    saveEdit();
    standUpTo((mLugar == Lugar::Linha ? mPonto : placeCount()) - 1);
}

void RecordSet::Move(qint32 quantos, qint32 inicio)
{
    requireOpen();
    if (inicio == kInicioPrimeiro)
        MoveFirst();
    else if (inicio == kInicioUltimo)
        MoveLast();
    else if (inicio != kInicioAtual)
        setBookmark(inicio);
    for (; quantos > 0; --quantos) {
        MoveNext();
        if (EOF_())
            return;
    }
    for (; quantos < 0; ++quantos) {
        MovePrevious();
        if (BOF())
            return;
    }
}

void RecordSet::Find(const QString &criterio)
{
    requireOpen();
    const Avaliador avaliador(readCriterio(criterio), mColunas);
    saveEdit();
    qsizetype place = placeCount();
    if (mLugar == Lugar::Linha)
        place = mPonto;
    else if (mLugar == Lugar::Inicio)
        place = 0;
    while (place < placeCount() && (deleted(rowAt(place)) || !matches(avaliador, rowAt(place))))
        ++place;
    standFrom(place);
}

void RecordSet::setFilter(const QString &criterio)
{
    requireOpen();
    std::optional<Criterio> filter;
    if (!criterio.isEmpty()) {
        filter = readCriterio(criterio);
        Avaliador(*filter, mColunas); // a column that is not there fails now, not at the next Requery
    }
    saveEdit();
    mFiltro = filter;
    rebuildOrder();
    standFrom(0);
    emit rowsChanged(false);
}

void RecordSet::setSort(const QString &ordem)
{
    requireOpen();
    const std::vector<TermoOrdem> terms = readOrdem(ordem);
    for (const TermoOrdem &term : terms)
        columnNumber(mColunas, term.coluna);
    saveEdit();
    mOrdenacao = terms;
    if (mFiltro)
        sortOrder(); // a row just written stays among the visible ones
    else
        rebuildOrder();
    standFrom(0);
    emit rowsChanged(false);
}

QString RecordSet::GetString(int linhas, const QString &entreColunas, const QString &entreLinhas)
{
    if (BOF() || EOF_())
        throw ErroBD(kErroSemRegistro);
    saveEdit();
    QString text;
    for (int read = 0; (linhas < 1 || read < linhas) && !EOF_(); ++read) {
        for (int column = 0; column < fieldCount(); ++column) {
            if (column > 0)
                text += entreColunas;
            text += variantText(value(column));
        }
        text += entreLinhas;
        MoveNext();
    }
    return text;
}

} // namespace quorel
