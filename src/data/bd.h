#pragma once

#include <QString>
#include <QVariant>

#include <array>
#include <functional>
#include <memory>
#include <vector>

class QComboBox;
class QLabel;
class QListView;
class QTableView;
class QWidget;

namespace quorel {

class Conexao;
class ErroExecucao;
class Pendentes;
struct Entregue;
struct Caixa;
struct LinhaLog;
enum class Resposta;
class RecordSet;

/// Numbers that every caller passes to Records_Set.
enum TipoCursor : qint32 { kCursorKeyset = 1, kCursorStatic = 3 };
inline constexpr qint32 kTravaOtimista = 3;
inline constexpr qint32 kOpcaoTexto = 1;

/// How RegistroTroca writes a value; any other number writes nothing.
enum TipoTroca : qint32 { kTrocaComoEsta = 0, kTrocaTexto = 1, kTrocaNumero = 2, kTrocaLogico = 3 };

/// Rows that an operation is meant for: the current one.
inline constexpr qint32 kAfetaAtual = 1;

/// The one way to the database. A query is opened under an alias and reached by that alias from then on; it keeps one
/// current record between calls, shared by all who name the alias.
///
/// An alias is compared without regard to case. An empty one (the default) means the table that the last call named:
/// such a call stands in a statement of its own. One that begins with a number above 0 is a slot number. One never
/// opened shows "Tabela não especificada…" and means slot 1.
///
/// Unless told otherwise a failure is shown in a box titled alias + " - " + operation, drops any pending change of
/// the record set, and the call gives an empty result. "Throws" means ErroExecucao (ErroBD from the store).
class BD final
{
    Q_DISABLE_COPY_MOVE(BD)
public:
    BD();
    ~BD(); ///< rolls an open transaction back

    /// Prefix of the connection string, the default when none was set. Afterwards an empty alias means slot 0.
    QString Linha_Conexao();
    void Linha_Conexao(const QString &linha);

    /// The connection of source slot 0, whatever slot is in use; null before it was opened.
    std::shared_ptr<Conexao> Source() const;
    /// Opens a connection. @param fonte  path of the database file (backslashes), or a full connection string when it
    /// holds "provider". @throws ErroBD when the file can't be opened, is empty, damaged or in the old format
    void Source(const QVariant &fonte);

    /// Closes all record sets and the connection of the source slot in use; a failure ends it quietly.
    void Fechar();
    /// Closes one. Kept: slot 1 can't be closed this way. @throws when the set was not open
    void FechaTabela(const QVariant &Alias = {});

    /// Opens a query under an alias, in place of an earlier one of that alias. Lets window events run once.
    /// @param Sql    in the provider's dialect; empty leaves a set that is not open
    /// @param Busca  criterion of a first search; empty for none. With no hit the first record is current
    /// @throws ErroBD after a box with the query, the number and the description, titled with the alias; so also for a
    ///         search without records. 9 without a box for a slot below 1
    void Records_Set(const QString &Sql, const QVariant &Alias, const QString &Busca = {},
        qint32 TipoCursor = kCursorStatic, qint32 TipoTrava = kTravaOtimista, qint32 Opcoes = kOpcaoTexto);

    /// The same for a query whose rows are perhaps never read: it is run by the first operation that reads the set, and
    /// its failure is that operation's. Without a connection it fails as Records_Set does.
    void deferRecords_Set(const QString &Sql, const QVariant &Alias);

    /// Logs a row: into the register, else with the rows that wait on this machine; either way it was written. It never
    /// joins a transaction that is open. The set of the alias is read again by whoever reads it next. Only when neither
    /// takes the row there is a box, as of a RegistroAtualiza.
    /// @param linha  without uuid, names and origin
    void RegistraLog(LinhaLog linha, const QVariant &Alias);
    /// Delivers the rows that wait for this register, those that were refused before too. Failures are silent: they
    /// wait on.
    void deliverWaitingRows();
    /// Delivers those of any file, and tells what came of it. @throws ErroBD when the register can't be written now
    Entregue deliverFrom(Pendentes &pendentes);
    Pendentes &waitingRows(); ///< of this account

    /// Where the register is expected, with backslashes, while none is open: rows wait for it.
    void expectSource(const QString &caminho);
    /// Drops the connection, and opens the register as a whole when it is needed next: another program held it.
    void openAtNextNeed(std::function<void()> open);

    /// A field of the current record with its own type: int, QString, bool, QDateTime, double. Null gives "", and so
    /// does a place before the first or behind the last record. Invalid before any Records_Set or without Nome.
    /// @param Nome      name (case ignored) or number of the field, from 0
    /// @param Marcador  bookmark to go to first; none when its text is empty
    QVariant Campo(const QVariant &Nome, const QVariant &Alias = {}, const QVariant &Marcador = {});
    /// Shows the picture of a binary field; the control is left alone when there is none. Failures as Campo.
    void CampoImagem(QLabel &Controle, const QVariant &Nome, const QVariant &Alias = {}, const QVariant &Marcador = {});

    /// Slot (from 1) of an alias. @param Avisa  false: an unknown one gives the next free slot, without a box
    qint16 Resolve_Alias(const QVariant &Alias, bool Avisa = true);

    /// Shows a record set in a grid. @param Largura0,Largura1  widths of columns 0 and 1 in twips; 0 leaves them
    void Grid_Set(QTableView &Controle, const QVariant &Alias = {}, qint32 Largura0 = 0, qint32 Largura1 = 0);
    void Grid_Zera(QTableView &Controle);
    /// Lists a column in a combo; an empty set only clears the text and leaves the list that was there.
    /// @param Campo  empty: the first column, whose name is put into it
    void Combo_Set(QComboBox &Controle, const QVariant &Alias, QString &Campo);
    void Combo_Zera(QComboBox &Controle);
    /// First column of the chosen record, which becomes the current one. With nothing chosen that of the current
    /// record (0 when there are none); invalid on an empty set. @throws as the record set does, and 9 for an unknown
    /// alias, without a box
    QVariant Combo_Cod(QComboBox &Controle, const QVariant &Alias = {});

    /// Searches from the first record on. A hit becomes current, a miss leaves the set behind its last record.
    /// Drops an edit in progress, keeps an added record pending.
    /// @param Criterio  "column operator value"; left in upper case. With no value: "" and no search
    /// @param Campo     field to give back as text; a number below 0 gives all, each followed by a tab
    /// @param Avisa     false: a failure is silent
    /// @return "" on a miss, an empty set or a failure
    QString Pesquisa(QString &Criterio, const QVariant &Alias, const QVariant &Campo, bool Avisa = true);
    /// Shows only the records that meet a criterion, and goes to the first; an empty criterion shows all again. An
    /// empty alias does nothing at all. @throws ErroBD for a criterion that can't be read
    void Filtro(const QString &Criterio, const QVariant &Alias);

    bool FimDeArquivo(const QVariant &Alias = {}); ///< behind the last record; @throws
    bool ComecoDeArquivo(const QVariant &Alias = {}); ///< before the first record; @throws

    /// The four moves. Kept: the first two may land behind the last or before the first record, where browsers notice
    /// it by position 0. Always give an invalid variant.
    QVariant MoveProximoRegistro(const QVariant &Alias = {});
    QVariant MoveRegistroAnterior(const QVariant &Alias = {});
    QVariant MoveParaComecoDeArquivo(const QVariant &Alias = {});
    QVariant MoveParaFimDeArquivo(const QVariant &Alias = {});

    /// Lets a control show a field of the current record, when there are records. @throws
    void Obj_Set(QWidget &Controle, const QVariant &Alias, const QString &Campo);

    /// All records as one text; see the separators. Ends where it began. @throws
    /// @param Campo1  one field by name, or by number when it begins with a digit; empty: all fields
    /// @param Campo2  with Campo1: these two, SeparadorCampo between them
    QString lista(const QVariant &Alias, const QString &Campo1 = {}, const QVariant &SeparadorLinha = {},
        const QString &Campo2 = {}, const QString &SeparadorCampo = {});
    /// Number of the current record from 1; -1 unknown, -2 before the first, -3 behind the last. @throws
    qint32 Posicao(const QVariant &Alias = {});
    /// Name of the field with that number, from 0; -1: all names with Separador between them. @throws
    QString NomeCampo(qint16 Indice, const QVariant &Alias = {}, const QVariant &Separador = {});
    bool TabelaVazia(const QVariant &Alias = {}); ///< true also for what can't be told
    qint32 NumeroTotalDeRegistros(const QVariant &Alias = {}); ///< that the filter lets through; @throws

    /// Begins a new record; it stays pending until RegistroAtualiza or CancelaAdicao.
    void RegistroAdiciona(const QVariant &Alias = {}, bool Avisa = true);
    /// Deletes the current record at once. @param Confirma  ask first, and move off the deleted record afterwards
    void RegistroApaga(
        const QVariant &Alias = {}, qint32 Afeta = kAfetaAtual, bool Confirma = true, const QString &Mensagem = {});
    /// Writes the pending change or the added record.
    void RegistroAtualiza(const QVariant &Alias = {}, bool Avisa = true);
    /// Writes a field of the current record, in memory. @param Valor  one of length 0 is written as ""
    void RegistroTroca(const QVariant &Campo, const QVariant &Valor, const QVariant &Alias = {},
        qint32 Tipo = kTrocaComoEsta, bool Avisa = true);
    void RegistroSalvaBinario(const QVariant &Campo, const QString &Arquivo, const QVariant &Alias = {});
    void RegistroInclui(const QVariant &Campo, const QVariant &Valor, const QVariant &Alias = {}); ///< @throws
    bool RecordSetVazia(
        const QVariant &Alias = {}); ///< no records, that is neither end is away from the other; @throws

    void Log(const QVariant &Texto); ///< adds a dated line to a text in memory

    void TransacaoInicio(); ///< nests; @throws 3709 without a connection
    void TransacaoFim(); ///< @throws ErroBD; the transaction is then undone
    void TransacaoCancela(); ///< @throws ErroBD when there is no transaction

    /// Runs the query again; the first record becomes current, filter and order stay.
    void ReAtualizaRecordSet(const QVariant &Alias = {}, bool Avisa = true);
    QVariant NomeAlias(const QVariant &Alias = {}); ///< @throws
    void DefineCache(qint16 Tamanho, const QVariant &Alias = {}); ///< @throws
    bool ExisteAlias(const QVariant &Alias);
    qint32 PosicaoRegistroAtual(const QVariant &Alias = {}); ///< from 1; 0 off the records and on a new one

    QVariant List_Cod(QListView &Controle,
        const QVariant &Alias = {}); ///< as Combo_Cod; the second column when the first is not above 0
    QVariant Grid_Cod(QTableView &Controle, const QVariant &Alias = {}); ///< likewise
    void List_Set(QListView &Controle, const QVariant &Alias, QString &Campo); ///< as Combo_Set, also for an empty set
    void List_Zera(QListView &Controle);

    void RecordSetResync(const QVariant &Alias = {}, qint32 Afeta = kAfetaAtual, qint32 Valores = 2);
    void CancelaEdicao(const QVariant &Alias = {}, qint32 Afeta = kAfetaAtual); ///< @throws
    void CancelaAdicao(const QVariant &Alias = {}, qint32 Afeta = kAfetaAtual); ///< @throws
    QVariant VoltaPosicao(const QVariant &Alias = {}); ///< to the mark, else to the first record
    bool MarcaPosicao(const QVariant &Alias = {}); ///< Kept: one mark for all record sets. @throws
    /// As Pesquisa, from the record behind the current one. @throws
    QString LocalizarProxima(QString &Criterio, const QVariant &Alias, const QVariant &Campo);
    void SourceAtual(qint16 slot); ///< 0 or 1; anything else is 0
    QVariant TabelasAbertas(); ///< all aliases, CR LF behind each; @throws before any Records_Set
    void Mover(
        qint32 Quantos, qint32 Inicio, const QVariant &Alias = {}); ///< Inicio 0 here, 1 first, 2 last, else bookmark
    /// Records from the current one on as text. @param Linhas  how many; below 1 means all
    QVariant RetornaRegistroString(
        qint16 Linhas, const QVariant &Alias, const QVariant &SeparadorColuna, const QVariant &SeparadorLinha);
    void Sort(const QString &Criterio, const QVariant &Alias = {}); ///< "column DESC, column"; empty: as read
    void CopiaRegistro(const QVariant &Alias, const QVariant &AliasDestino);
    void CopiaTabela(
        const QVariant &Alias, const QVariant &AliasDestino, bool Avanca = false); ///< Avanca: without the first field
    std::shared_ptr<RecordSet> GetRecordSet(const QVariant &Alias = {}); ///< not to be closed by the holder
    void SeekEx(const QVariant &Alias = {}); ///< does nothing but name the alias
    QVariant ModoEdicao(
        const QVariant &Alias = {}); ///< 0 none, 1 edit, 2 added, 4 deleted; invalid off the records. @throws

private:
    /// Shows the failure that is being handled and drops the pending change. Numero 0: number and description are
    /// taken from that failure. Never throws.
    void Relata_Erro(const QVariant &Alias, qint32 &Numero, QString &Descricao, const QString &Origem);
    /// Runs an operation whose failure is reported, if Avisa, with its own number and description.
    void reported(const QVariant &Alias, const QString &Origem, bool Avisa, const std::function<void()> &operation);

    void openIfPutOff();
    void takeLogRow(LinhaLog row); ///< @throws ErroBD when neither the register nor the waiting rows took it
    bool logged(const LinhaLog &row, bool &doubtful); ///< in the register @throws ErroBD
    void keepRow(LinhaLog row); ///< @throws ErroBD
    QString nameIn(const QVariant &Alias, const QString &chave, const QString &campo, qint32 codigo) const;
    QString sourcePath() const; ///< native, absolute
    void afterTransaction();

    /// Shows a box of ours, after the lock of an open transaction was given back: nobody else waits for a click.
    Resposta ask(const Caixa &box);

    /// Reports a failure of Campo and CampoImagem, with the field's name.
    void reportField(const ErroExecucao &erro, const QVariant &Nome, const QVariant &Alias);

    int aliasSlot(const QString &alias) const; ///< 0 when there is none @throws 9 when there is no table yet
    qint16 resolve(const QVariant &Alias, bool Avisa);
    void growTables(int slot);
    /// The set of a slot, shared since a box may let another call replace it. @throws 9 or 91
    std::shared_ptr<RecordSet> setOf(int slot) const;
    std::shared_ptr<RecordSet> resolved(const QVariant &Alias);
    Conexao &connection() const; ///< of the source slot in use @throws 3709
    void move(const QVariant &Alias, const std::function<void(RecordSet &)> &guarded);
    void backToMark(RecordSet &set);
    /// What both searches begin with. @return the set to search; null when there is nothing to search for
    std::shared_ptr<RecordSet> readySearch(QString &Criterio, const QVariant &Alias);
    QString foundText(RecordSet &set, const QVariant &Alias, const QVariant &Campo);

    QString mLinhaConexao;
    std::array<std::shared_ptr<Conexao>, 2> mConexoes;
    std::vector<std::shared_ptr<RecordSet>> mRecordSets; ///< element 0 is slot 1
    bool mAberto = false;
    std::vector<QString> mAliases; ///< as long as mRecordSets; empty when there is no table yet
    std::array<QString, 2> mFontes;
    QVariant mAtual; ///< slot that the last resolution gave
    QString mLog;
    qint16 mSourceAtual = 0;
    QVariant mMarca; ///< one bookmark for all record sets

    std::unique_ptr<Pendentes> mPendentes;
    bool mGuardouDentro = false; ///< a row had to wait for the end of the transaction that is open
    QString mIdentidade; ///< of the register that was open last
    QString mEsperado;
    std::function<void()> mAbreDepois;
};

/// The working instance that every window uses, and its twin that never gets a connection.
extern std::unique_ptr<BD> gBD;
extern std::unique_ptr<BD> gBD2;

/// Makes the two instances, without connections, at the start of the program. The end of the program rolls back what
/// they have open.
void criaBD();

/// Fresh instances, as after criaBD(); for tests.
void reiniciaData();

} // namespace quorel
