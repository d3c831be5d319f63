#include "register/login.h"

#include "platform/twips.h"
#include "register/quadro.h"
#include "visual/aparencia.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr double kPontos = 9.75;
static constexpr Lugar kCliente{0, 0, 5100, 2310};
static constexpr LinhaLayout kCadeado{u"ImgCadeado", {240, 270, 600, 600}};
static constexpr LinhaLayout kPergunta{u"lblLabels(0)", {1050, 300, 3870, 540}};
static constexpr LinhaLayout kSenha{u"lblLabels(1)", {1050, 1050, 870, 285}};
static constexpr LinhaLayout kTxtPassword{u"txtPassword", {1950, 990, 2910, 405}};
static constexpr LinhaLayout kCmdOK{u"cmdOK", {1950, 1605, 1380, 480}};
static constexpr LinhaLayout kCmdCancel{u"cmdCancel", {3480, 1605, 1380, 480}};
static constexpr int kMaxSenha = 8; // characters

Login::Login(JanelaAtiva &ativa, std::function<void(qint16)> aceita)
    : JanelaBase(ativa, u"Login"_s, kCliente), mAceita(std::move(aceita))
{
    buildLayout();
    connectEvents();
}

void Login::buildLayout()
{
    QPalette paleta = palette();
    paleta.setColor(QPalette::Window, QColor::fromRgb(kLaranjaPalido));
    setPalette(paleta);
    setFont(fonte(Tipo::Arial, kPontos));
    setWindowTitle(u"Login"_s);

    auto *cadeado = novoRotulo(kCadeado, QString(), nullptr, this);
    cadeado->setAccessibleName(u"Um cadeado"_s);
    cadeado->setPixmap(face(u"cadeado"_s).pixmap(pixels(kCadeado.lugar.Width)));
    mTxtPassword = novoCampo(kTxtPassword, u"Senha"_s, this);
    mTxtPassword->setMaxLength(kMaxSenha);
    mTxtPassword->setEchoMode(QLineEdit::Password);
    mTxtPassword->setStyleSheet(u"lineedit-password-character: %1"_s.arg(int('*')));
    mPergunta = novoRotulo(kPergunta, u"Professora "_s, nullptr, this);
    mPergunta->setWordWrap(true);
    novoRotulo(kSenha, u"&Senha:"_s, mTxtPassword, this);
    mCmdOK = novoBotaoDeTexto(kCmdOK, u"OK"_s, this);
    mCmdOK->setAutoDefault(false); // or it would cease to be the default one when the focus leaves it
    mCmdOK->setDefault(true);
    mCmdCancel = novoBotaoDeTexto(kCmdCancel, u"Cancelar"_s, this);
}

} // namespace quorel
