#include "register/login.h"

#include "platform/codec.h"
#include "platform/costuras.h"
#include "register/estado.h"
#include "register/registros.h"
#include "startup/estado.h"
#include "startup/valor.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr char16_t kSenhaMestra[] = u"CHAVEMA";

void Login::connectEvents()
{
    connect(mCmdOK, &QPushButton::clicked, this, &Login::ok);
    connect(mCmdCancel, &QPushButton::clicked, this, &Login::cancel);
}

static QString fieldOfClass(const QString &campo)
{
    return procura(u"CL_Cod= "_s + QString::number(gClasse), u"rsClasses"_s, campo);
}

void Login::load()
{
    if (gClasse == 0) {
        caixa({.texto = u"Selecione uma classe primeiro"_s, .titulo = u"Histórico"_s, .icone = Icone::Informacao});
        return;
    }
    mPergunta->setText(u"Professor(a) "_s + fieldOfClass(u"CL_Prof"_s) + u" digite sua senha."_s);
}

void Login::activate()
{
    mTxtPassword->setFocus();
}

void Login::unload()
{
    hide();
    mTxtPassword->clear();
    setDescarregada();
}

void Login::setPergunta(const QString &texto)
{
    carrega();
    mPergunta->setText(texto);
}

void Login::centraEm(const Lugar &janela)
{
    vaiPara(janela.Left + (janela.Width - cliente().Width) / 2, janela.Top + (janela.Height - cliente().Height) / 2);
}

bool Login::isRight() const
{
    const QString senha = fieldOfClass(u"CL_Senha"_s);
    const QString digitada = upper1252(mTxtPassword->text());
    return digitada == upper1252(senha) || digitada == QStringView(kSenhaMestra);
}

void Login::ok()
{
    if (!isRight()) {
        caixa({.texto = u"Senha inválida, tente novamente!"_s, .titulo = u"Acesso Restrito"_s});
        mTxtPassword->setFocus();
        mTxtPassword->selectAll(); // the next typing replaces it
        return;
    }
    gSenhaOK = true;
    mTxtPassword->clear();
    mAceita(inteiro16(valorNumerico(mTag)));
    hide();
}

void Login::cancel()
{
    gSenhaOK = false;
    descarrega();
}

void Login::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        mCmdOK->click();
    else if (event->key() == Qt::Key_Escape)
        mCmdCancel->click();
    else
        JanelaBase::keyPressEvent(event);
}

} // namespace quorel
