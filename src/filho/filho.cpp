#include "filho/filho.h"

#include "platform/codec.h"

#include <QPointer>

namespace quorel {

namespace {

QString textOf(const CopyData &dados)
{
    const QByteArrayView bytes(static_cast<const char *>(dados.bytes), dados.bytes ? qsizetype(dados.size) : 0);
    const qsizetype nul = bytes.indexOf('\0');
    return decode1252(nul < 0 ? bytes : bytes.first(nul));
}

} // namespace

Filho::Filho(const QString &titulo, QWidget *corpo, const Interna &interna) : mEndereco(corpo)
{
    setSendLimit(0);
    mAnterior = mEndereco.replaceProc([this](Janela janela, quint32 message, quintptr wParam, qintptr lParam) {
        return procedure(janela, message, wParam, lParam);
    });
    mEndereco.publish(titulo, interna);
    watchGerenciador();
}

Filho::~Filho()
{
    mEndereco.withdraw();
}

qintptr Filho::procedure(Janela janela, quint32 message, quintptr wParam, qintptr lParam)
{
    if (message != kCopyData || lParam == 0)
        return callWindowProc(mAnterior, janela, message, wParam, lParam);
    // The address comes as a number: that is what a window procedure is given.
    const CopyData &dados = *reinterpret_cast<const CopyData *>(lParam); // NOLINT(performance-no-int-to-ptr)
    const auto code = quint32(dados.code);
    mRemetente = wParam;
    if (code == MSG_AULA)
        ++mPendentes;
    mEncerra = mEncerra || code == MSG_SAI;
    QMetaObject::invokeMethod(
        this, [this, code, texto = textOf(dados)] { deliver(code, texto); }, Qt::QueuedConnection);
    return 1;
}

void Filho::watchGerenciador()
{
    const Janela shell = gerenciador();
    if (shell == 0 || mVigiados.contains(shell))
        return;
    mVigiados.append(shell);
    watchOwner(shell, [self = QPointer(this)] {
        if (self && !self->temGerenciador())
            emit self->semGerenciador();
    });
}

void Filho::deliver(quint32 code, const QString &texto)
{
    watchGerenciador();
    switch (code) {
    case MSG_AULA:
        --mPendentes;
        emit aula(texto);
        break;
    case MSG_CONTROLE:
        emit controle(texto);
        break;
    case MSG_SAI:
        emit encerra();
        break;
    case MSG_JOGO:
        emit jogo(texto);
        break;
    default:
        break;
    }
}

Janela Filho::gerenciador() const
{
    return mRemetente ? publishedWindowOf(mRemetente, kTituloGerenciador) : publishedWindowOfParent(kTituloGerenciador);
}

bool Filho::temGerenciador() const
{
    return gerenciador() != 0;
}

bool Filho::envia(quint32 code, const QString &texto)
{
    if (texto.size() >= qsizetype(kMaxCopyData))
        return false;
    const Janela destino = gerenciador();
    if (!destino)
        return false;
    QByteArray bytes = encode1252(texto);
    bytes.append('\0');
    return sendCopyData(destino, mEndereco.handle(), code, qint32(bytes.size()), bytes) != 0;
}

bool Filho::proxima(const QString &resposta)
{
    return envia(MSG_PROXIMA, resposta);
}

bool Filho::anterior(const QString &resposta)
{
    return envia(MSG_ANTERIOR, resposta);
}

bool Filho::sai(const QString &resposta)
{
    return envia(MSG_SAI, resposta);
}

bool Filho::resposta(const QString &texto)
{
    return envia(MSG_RESPOSTA, texto);
}

bool Filho::calculadora(const QString &texto)
{
    return envia(MSG_EXEC_CALC, texto);
}

bool Filho::pedeJogo()
{
    return envia(MSG_JOGO, QString());
}

bool Filho::aluno(int codigo)
{
    return envia(MSG_ALUNO, QString::number(codigo));
}

bool Filho::classe(int codigo)
{
    return envia(MSG_CLASSE, QString::number(codigo));
}

bool Filho::fechaBlocos()
{
    return envia(MSG_FECHA_BLOCOS, QString());
}

} // namespace quorel
