#pragma once

#include "data/campos.h"
#include "data/criterio.h"
#include "data/linhas.h"

#include <QObject>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace quorel {

class Conexao;
class Avaliador;
struct Atribuicao;

/// Special values of AbsolutePosition.
enum PosicaoEspecial : qint32 { kPosicaoDesconhecida = -1, kPosicaoInicio = -2, kPosicaoFim = -3 };

/// Values of EditMode.
enum ModoEdicao : qint32 { kEdicaoNenhuma = 0, kEdicaoEmCurso = 1, kEdicaoInclusao = 2, kEdicaoExcluido = 4 };

/// Start points of Move; other numbers are bookmarks.
enum InicioMove : qint32 { kInicioAtual = 0, kInicioPrimeiro = 1, kInicioUltimo = 2 };

/// The provider's record set over a store: rows read whole into memory at open, one current record, changes of one
/// record in memory until they are written. Everything throws ErroBD: kErroFechado before open(), the store's failures
/// as they are. Rows are numbered from 1 in the order of the last open or Requery; that number is the Bookmark.
class RecordSet final : public QObject
{
    Q_OBJECT
public:
    RecordSet();
    ~RecordSet() override;

    void open(std::shared_ptr<Conexao> conexao, const QString &sql); ///< the first record becomes current
    /// Opens it, but reads nothing before settle(): its rows are not wanted yet, only perhaps.
    void openLater(std::shared_ptr<Conexao> conexao, const QString &sql);
    void requeryLater(); ///< the same for Requery, when nothing is pending
    bool isPutOff() const { return mAdiada; }
    void settle(); ///< reads what was put off @throws as open(); it is then still put off
    void Close(); ///< drops what is pending
    bool isOpen() const { return mConexao != nullptr; }
    void setCacheSize(int linhas); ///< for the provider's sake: all rows are in memory

    int fieldCount() const;
    const Coluna &field(int number) const; ///< from 0 @throws kErroNome
    int fieldNumber(const QVariant &nome) const; ///< by name, case ignored, or number from 0 @throws kErroNome
    QVariant value(const QVariant &nome) const; ///< of the current record; Null is a null variant
    QVariant value(int numero) const; ///< the same by number from 0
    void setValue(const QVariant &nome, const QVariant &valor); ///< in memory, converted to the field's type
    bool writable(int number) const; ///< whether a field can be assigned

    bool BOF() const;
    bool EOF_() const;
    qint32 RecordCount() const;
    qint32 AbsolutePosition() const;
    qint32 EditMode() const;
    qint32 Bookmark() const; ///< @throws kErroSemRegistro off the records
    void setBookmark(const QVariant &marca); ///< a number that leads nowhere leads to the first visible record

    void MoveFirst();
    void MoveLast();
    void MoveNext(); ///< @throws kErroSemRegistro at EOF
    void MovePrevious(); ///< @throws kErroSemRegistro at BOF
    void Move(qint32 quantos, qint32 inicio);

    void AddNew();
    void Update(); ///< writes the added record or the current one's change
    void UpdateBatch(); ///< these, and the changes that a Resync kept
    void CancelUpdate();
    void CancelBatch();
    void dropChanges(); ///< all that is pending, in any row and also what a Resync kept
    void Delete(qint32 afeta);
    void Resync(); ///< of the current record; see EditMode
    void Requery();

    /// Searches from the current record on, itself included. A miss ends behind the last record.
    void Find(const QString &criterio);
    void setFilter(const QString &criterio); ///< empty shows all; goes to the first
    void setSort(const QString &ordem);
    /// @param linhas  how many records from the current one on; below 1 all. Ends behind the last one read
    QString GetString(int linhas, const QString &entreColunas, const QString &entreLinhas);

    /// What lists show: the visible rows in order, by bookmark; an added record is not among them.
    std::vector<qint32> visibleBookmarks() const;
    /// A column of the first row, filtered out or not, that has a number in another one; invalid when none does.
    QVariant lookUp(int coluna, qint64 numero, int resultado) const;
    QVariant valueAt(qint32 marca, int coluna) const; ///< column from 0; invalid for a bookmark without a row

signals:
    void rowsChanged(bool renumeradas); ///< other rows, or other values in them; with other bookmarks when read again
    void currentChanged(); ///< another current record

private:
    enum class Lugar { Inicio, Linha, Fim, Novo };
    using Valores = std::map<int, QVariant>; ///< by field number
    struct Edicao
    {
        Valores valores;
        bool emLote = false; ///< kept by a Resync for UpdateBatch
    };
    struct Inclusao
    {
        Valores valores;
        Lugar voltaLugar; ///< where CancelUpdate goes back to
        qsizetype voltaPonto;
    };

    void requireOpen() const;
    void requireWritableSet() const;
    qsizetype currentRow() const; ///< @throws kErroSemRegistro when there is none to read or change
    void load();
    void findBase(); ///< table and key column that writes go to
    qsizetype rowCount() const { return mLinhas.rowCount() + mAcrescidas; }
    bool deleted(qsizetype row) const;
    void requireOrder(const std::vector<Coluna> &colunas) const; ///< @throws kErroNome when filter or sort miss one
    void rebuildOrder(); ///< by filter and sort, on stored values
    void sortOrder(); ///< the rows that the filter let through
    bool matches(const Avaliador &avaliador, qsizetype row) const;

    // Places are positions among the rows that filter and sort let through, from 0, deleted rows included.
    qsizetype placeCount() const { return mComoLidas ? rowCount() : std::ssize(mOrdem); }
    qsizetype rowAt(qsizetype place) const { return mComoLidas ? place : mOrdem[static_cast<size_t>(place)]; }
    qsizetype visibleCount() const { return placeCount() - mExcluidasEmOrdem; }
    void standFrom(qsizetype place); ///< on the first row not deleted from there on, else at EOF
    void standUpTo(qsizetype place); ///< on the last one up to there, else at BOF
    void stand(Lugar lugar, qsizetype place = 0);
    void saveEdit(); ///< before a move

    QVariant storedValue(qsizetype row, int column) const; ///< without what is pending
    bool editing() const; ///< whether the current row has a change that is not in the batch
    qint64 keyOf(qsizetype row) const;
    std::vector<Atribuicao> assignments(const Valores &valores) const;
    void writeEdit(qsizetype row);
    void writeAdded();
    QVariant addedKey(qlonglong number) const;
    void reread(qsizetype row, const Valores &exceto);

    std::shared_ptr<Conexao> mConexao;
    QString mSql;
    bool mAdiada = false; ///< the reading is put off
    std::vector<Coluna> mColunas;
    QString mBase;
    int mChave = -1; ///< key column; -1: read-only
    Linhas mLinhas;
    std::map<qsizetype, Valores> mGravados; ///< values written since the rows were read
    qsizetype mAcrescidas = 0; ///< rows added since, behind those of mLinhas
    std::set<qsizetype> mExcluidas; ///< rows
    bool mComoLidas = true; ///< all rows in the order they were read; mOrdem is not used
    std::vector<qsizetype> mOrdem;
    qsizetype mExcluidasEmOrdem = 0;
    std::optional<Criterio> mFiltro;
    std::vector<TermoOrdem> mOrdenacao;
    std::map<qsizetype, Edicao> mEdicoes; ///< by row
    std::optional<Inclusao> mInclusao;
    Lugar mLugar = Lugar::Inicio;
    qsizetype mPonto = 0; ///< current place, when mLugar is Linha
};

} // namespace quorel
