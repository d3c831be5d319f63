#include "data/bd.h"

#include "data/conexao.h"
#include "data/datas.h"
#include "data/errobd.h"
#include "data/pendentes.h"
#include "data/recordset.h"
#include "data/textos.h"
#include "platform/caminho.h"
#include "platform/codec.h"
#include "platform/costuras.h"
#include "platform/eventos.h"
#include "platform/fim.h"
#include "startup/quorel_zeto.h"
#include "startup/valor.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace quorel {

std::unique_ptr<BD> gBD;
std::unique_ptr<BD> gBD2;

void criaBD()
{
    static bool told = false;
    reiniciaData();
    if (!told)
        beforeEnd([] {
            gBD.reset();
            gBD2.reset();
        });
    told = true;
}

void reiniciaData()
{
    gBD = std::make_unique<BD>();
    gBD2 = std::make_unique<BD>();
}

BD::BD() = default;

// Lists of windows, and who waits for a box, still hold record sets and so the connections at the end of the program.
BD::~BD()
{
    for (const auto &connection : mConexoes) {
        if (connection)
            connection->undoAll();
    }
}

QString BD::Linha_Conexao()
{
    mAtual = 0; // Kept: an empty alias afterwards means slot 0, which does not exist
    return mLinhaConexao.isEmpty() ? u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s : mLinhaConexao;
}

void BD::Linha_Conexao(const QString &linha)
{
    mLinhaConexao = linha;
}

std::shared_ptr<Conexao> BD::Source() const
{
    return mConexoes[0];
}

void BD::Source(const QVariant &fonte)
{
    const auto slot = static_cast<size_t>(mSourceAtual);
    const QString text = variantText(fonte);
    mConexoes[slot].reset();
    const QString line = text.contains("PROVIDER"_L1, Qt::CaseInsensitive) ? text : Linha_Conexao() + text;
    const bool again = mFontes[slot] == text; // a window is up by then, and waits with us
    mFontes[slot] = text;
    mConexoes[slot] = std::make_shared<Conexao>(line, again ? Espera::Operacao : Espera::Abertura);
    mLinhaConexao.clear();
    mAberto = false;
    ignora([&] { mIdentidade = mConexoes[slot]->identity().identidade; });
}

void BD::SourceAtual(qint16 slot)
{
    mSourceAtual = slot == 1 ? slot : qint16(0);
}

/// Where the register was to be found: with a wrong /CFG: it is looked for in another place than the one meant.
[[noreturn]] static void failWithoutConnection()
{
    const QString plain = ErroBD(kErroSemConexao).descricao();
    const QString configuration = gConfig.ArquivoCnf.isEmpty() ? u"nenhuma"_s : nativePath(gConfig.ArquivoCnf);
    throw ErroBD(kErroSemConexao,
        u"%1 Cadastro: %2. Configuração: %3."_s.arg(
            plain, nativePath(gConfig.Config(u"ZETO_CAD"_s) + u"\\Cadastros.mdb"_s), configuration));
}

Conexao &BD::connection() const
{
    const std::shared_ptr<Conexao> &found = mConexoes[static_cast<size_t>(mSourceAtual)];
    if (!found)
        failWithoutConnection();
    return *found;
}

void BD::Fechar()
{
    ignora([this] {
        for (auto &set : mRecordSets) {
            if (!set)
                throw ErroExecucao(kFalhaObjeto);
            set->Close();
            set.reset();
        }
        connection().Close();
        mConexoes[static_cast<size_t>(mSourceAtual)].reset();
        mRecordSets.clear(); // as long as the aliases
        mAliases.clear();
    });
}

void BD::FechaTabela(const QVariant &Alias)
{
    const int slot = Resolve_Alias(Alias, false);
    if (slot <= 1 || slot > std::ssize(mAliases))
        return;
    setOf(slot)->Close();
    mRecordSets[static_cast<size_t>(slot - 1)].reset();
    mAliases[static_cast<size_t>(slot - 1)].clear();
}

void BD::growTables(int slot)
{
    const auto size = static_cast<size_t>(slot);
    if (size > mAliases.size())
        mAliases.resize(size);
    if (mAliases.size() > mRecordSets.size())
        mRecordSets.resize(mAliases.size());
}

void BD::Records_Set(const QString &Sql, const QVariant &Alias, const QString &Busca, qint32, qint32, qint32)
{
    const QString alias = variantText(Alias);
    openIfPutOff();
    try {
        const int slot = Resolve_Alias(Alias, false);
        if (slot < 1)
            throw ErroExecucao(kFalhaIndice);
        growTables(slot);
        eventTurn(); // other calls may come in here
        growTables(slot);
        const auto set = std::make_shared<RecordSet>();
        mRecordSets[static_cast<size_t>(slot - 1)] = set;
        if (!Sql.isEmpty()) {
            connection();
            set->open(mConexoes[static_cast<size_t>(mSourceAtual)], Sql);
            if (!Busca.isEmpty()) {
                set->Find(Busca);
                if (set->EOF_())
                    set->MoveFirst(); // Kept: without records that fails
            }
        }
        if (!alias.isEmpty())
            mAliases[static_cast<size_t>(slot - 1)] = alias;
        mAberto = true;
    } catch (const ErroExecucao &erro) {
        if (erro.numero() != kFalhaIndice) // Kept: a slot that can't be made is not told
            ask({Sql + kFimLinha + QString::number(erro.numero()) + u'\t' + erro.descricao(), alias});
        throw;
    }
}

int BD::aliasSlot(const QString &alias) const
{
    if (mAliases.empty())
        throw ErroExecucao(kFalhaIndice);
    for (int slot = 1; const QString &known : mAliases) {
        if (equalNoCase(known, alias))
            return slot;
        ++slot;
    }
    return 0;
}

qint16 BD::resolve(const QVariant &Alias, bool Avisa)
{
    const QString alias = variantText(Alias);
    if (alias.isEmpty())
        return inteiro16(mAtual.toDouble());
    if (const double number = valorNumerico(alias); number > 0) {
        mAtual = number;
        return inteiro16(number);
    }
    int slot = aliasSlot(alias);
    if (slot == 0 && Avisa) {
        ask({.texto = u"Tabela não especificada !!!!  ("_s + alias + u')' + kFimLinha
                + u"Como padrão será selecionda "_s + u"a Primeira Tabela da Lista"_s});
        return 1;
    }
    if (slot == 0)
        slot = static_cast<int>(mAliases.size()) + 1;
    mAtual = slot;
    return inteiro16(slot);
}

qint16 BD::Resolve_Alias(const QVariant &Alias, bool Avisa)
{
    try {
        return resolve(Alias, Avisa);
    } catch (const ErroExecucao &) { // so that the very first alias gets slot 1
        mAtual = 1;
        return 1;
    }
}

std::shared_ptr<RecordSet> BD::setOf(int slot) const
{
    if (slot < 1 || slot > std::ssize(mRecordSets))
        throw ErroExecucao(kFalhaIndice);
    const std::shared_ptr<RecordSet> &set = mRecordSets[static_cast<size_t>(slot - 1)];
    if (!set)
        throw ErroExecucao(kFalhaObjeto);
    set->settle();
    return set;
}

std::shared_ptr<RecordSet> BD::resolved(const QVariant &Alias)
{
    return setOf(Resolve_Alias(Alias));
}

QVariant BD::NomeAlias(const QVariant &Alias)
{
    const int slot = Resolve_Alias(Alias);
    if (slot < 1 || slot > std::ssize(mAliases))
        throw ErroExecucao(kFalhaIndice);
    return mAliases[static_cast<size_t>(slot - 1)];
}

void BD::DefineCache(qint16 Tamanho, const QVariant &Alias)
{
    resolved(Alias)->setCacheSize(Tamanho);
}

bool BD::ExisteAlias(const QVariant &Alias)
{
    bool exists = false;
    ignora([&] { exists = aliasSlot(variantText(Alias)) > 0; });
    return exists;
}

QVariant BD::TabelasAbertas()
{
    if (mAliases.empty())
        throw ErroExecucao(kFalhaIndice);
    QString text;
    for (const QString &alias : mAliases)
        text += alias + kFimLinha;
    return text;
}

std::shared_ptr<RecordSet> BD::GetRecordSet(const QVariant &Alias)
{
    std::shared_ptr<RecordSet> set;
    reported(Alias, u"AtivaForm"_s, true, [&] { set = resolved(Alias); });
    return set;
}

void BD::Log(const QVariant &Texto)
{
    mLog += dateText(agora()) + u'\t' + variantText(Texto) + kFimLinha;
}

/// The failure that is being handled.
static ErroExecucao pendingFailure()
{
    try {
        throw;
    } catch (const ErroExecucao &erro) {
        return ErroExecucao(erro.numero(), erro.descricao());
    }
}

static Caixa boxOf(int number, const QString &description, const QString &pending)
{
    switch (number) {
    case kErroArmazem:
        return {.texto = description, .icone = Icone::Informacao};
    case kErroSemRegistro:
    case kErroContexto:
        return {.texto = pending, .icone = Icone::Informacao};
    case kErroNome:
        return {
            .texto = description + kFimLinha + u"O nome do campo não esta na tabela !!!"_s, .icone = Icone::Critico};
    default:
        return {.texto = description, .icone = Icone::Critico};
    }
}

Resposta BD::ask(const Caixa &box)
{
    std::optional<Caixa> lost;
    try {
        if (const auto &open = mConexoes[static_cast<size_t>(mSourceAtual)]; open && open->isOpen())
            open->settle();
    } catch (const ErroExecucao &erro) { // what had worked is gone as well, and this is all that tells
        lost = Caixa{.texto = erro.descricao(), .titulo = box.titulo, .icone = Icone::Critico};
    }
    const Resposta answer = caixa(box);
    if (lost)
        caixa(*lost);
    return answer;
}

void BD::Relata_Erro(const QVariant &Alias, qint32 &Numero, QString &Descricao, const QString &Origem)
{
    const ErroExecucao pending = pendingFailure();
    ignora([&] {
        const int slot = Resolve_Alias(Alias);
        if (Numero == 0) {
            Numero = pending.numero();
            Descricao = pending.descricao();
        }
        if (Numero == 0)
            return;
        Caixa box = boxOf(Numero, Descricao, pending.descricao());
        box.titulo = variantText(Alias) + u" - "_s + Origem;
        ask(box);
        setOf(slot)->dropChanges();
    });
}

void BD::reported(const QVariant &Alias, const QString &Origem, bool Avisa, const std::function<void()> &operation)
{
    try {
        operation();
    } catch (const ErroExecucao &erro) {
        if (!Avisa)
            return;
        qint32 number = erro.numero();
        QString description = erro.descricao();
        Relata_Erro(Alias, number, description, Origem);
    }
}

} // namespace quorel
