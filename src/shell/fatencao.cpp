#include "shell/fatencao.h"

#include "platform/twips.h"
#include "visual/aparencia.h"
#include "visual/lugar.h"

#include <QLabel>
#include <QPushButton>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr Lugar kCliente{0, 0, 3900, 3000}; // its title bar shows the whole title
static constexpr LinhaLayout kImgFundo{u"ImgFundo", {0, 0, 3900, 3000}};
static constexpr LinhaLayout kLblConect{u"LblConect", {120, 420, 2670, 1755}};
static constexpr LinhaLayout kCmdOK{u"cmdOK", {1410, 2400, 1080, 420}};
static constexpr double kPontosTexto = 14.25;
static constexpr double kPontosBotao = 9.75;
static constexpr QRgb kAzulEscuro = 0xff000080;

fAtencao::fAtencao(QWidget *parent) : QDialog(parent)
{
    setObjectName(u"fAtencao"_s);
    setWindowTitle(u"Blocos de Atividades"_s);
    setPalette(paletaPropria());
    setFixedSize(pixels(kCliente.Width), pixels(kCliente.Height));

    auto *fundo = new QLabel(this);
    fundo->setObjectName(QString::fromUtf16(kImgFundo.nome));
    fundo->setAccessibleName(u"Uma tomada desligada"_s);
    fundo->setPixmap(figura(u"fundo_atencao"_s));
    coloca(*fundo, kImgFundo.lugar);

    auto *texto = new QLabel(u"Você deve se CONECTAR À INTERNET e tentar novamente!"_s, this);
    texto->setObjectName(QString::fromUtf16(kLblConect.nome));
    texto->setTextFormat(Qt::PlainText);
    texto->setWordWrap(true);
    texto->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    texto->setFont(fonte(Tipo::Arial, kPontosTexto, true));
    QPalette paleta = texto->palette();
    paleta.setColor(QPalette::WindowText, QColor::fromRgb(kAzulEscuro));
    texto->setPalette(paleta);
    coloca(*texto, kLblConect.lugar);

    auto *ok = new QPushButton(u"OK"_s, this);
    ok->setObjectName(QString::fromUtf16(kCmdOK.nome));
    ok->setFont(fonte(Tipo::Arial, kPontosBotao));
    ok->setDefault(true);
    coloca(*ok, kCmdOK.lugar);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
}

} // namespace quorel
