#include "oficina/previa.h"

#include <QEvent>
#include <QGraphicsProxyWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr QSize kMenor(360, 300); // pixels, of the view
static constexpr QSize kLicao(780, 540); // of the player, whose least size it is

Previa::Previa(Midia midia, QWidget *parent) : QWidget(parent), mMidia(std::move(midia))
{
    setObjectName(u"Previa"_s);
    const auto button = [this](const QString &name, const QString &face, const QString &said) {
        auto *made = new QPushButton(face, this);
        made->setObjectName(name);
        made->setAccessibleName(said);
        made->setToolTip(said);
        return made;
    };
    QPushButton *before = button(u"CmdAulaAnterior"_s, u"◀"_s, u"Aula anterior (Ctrl+PgUp)"_s);
    QPushButton *next = button(u"CmdProximaAula"_s, u"▶"_s, u"Próxima aula (Ctrl+PgDn)"_s);
    mTitulo = new QLabel(this);
    mTitulo->setObjectName(u"LblAula"_s);
    mTitulo->setTextFormat(Qt::PlainText);
    mTitulo->setAlignment(Qt::AlignCenter);
    mVista = new QGraphicsView(&mCena, this);
    mVista->setObjectName(u"VistaLicao"_s);
    mVista->setAccessibleName(u"A lição como a criança a vê"_s);
    mVista->setMinimumSize(kMenor);
    mVista->setFocusPolicy(Qt::ClickFocus); // the Tab key would go through all of the lesson; F6 leads there
    mVista->setFrameShape(QFrame::NoFrame);
    mVista->setRenderHints(QPainter::SmoothPixmapTransform | QPainter::Antialiasing);
    mVista->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mVista->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    mVista->viewport()->installEventFilter(this);
    auto *row = new QHBoxLayout;
    row->addWidget(before);
    row->addWidget(mTitulo, 1);
    row->addWidget(next);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(row);
    column->addWidget(mVista, 1);
    connect(before, &QPushButton::clicked, this, &Previa::anterior);
    connect(next, &QPushButton::clicked, this, &Previa::proxima);
    mostraNada(u"Escreva um roteiro com uma aula: ela aparece aqui."_s);
}

bool Previa::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        fit();
    return QWidget::eventFilter(watched, event);
}

/// The player takes the view's shape and is drawn as large as fits.
void Previa::fit()
{
    const QSize room = mVista->viewport()->size();
    if (!mPlayer || room.isEmpty())
        return;
    QSize size(kLicao.width(), kLicao.width() * room.height() / room.width());
    if (size.height() < kLicao.height())
        size = {kLicao.height() * room.width() / room.height(), kLicao.height()};
    if (room.width() >= size.width() && room.height() >= size.height())
        size = room; // no larger than life
    mPlayer->resize(size);
    mCena.setSceneRect(QRectF(QPointF(), size));
    mVista->fitInView(mCena.sceneRect(), Qt::KeepAspectRatio);
}

JanelaLicao &Previa::playerFor(Programa programa)
{
    if (mPlayer && mPrograma == programa)
        return *mPlayer;
    if (mPlayer) {
        mPlayer->hide();
        mPlayer->deleteLater(); // one of its buttons may have led here; its place in the scene goes with it
    }
    mPrograma = programa;
    mPlayer = new JanelaLicao(programa, mMidia);
    mPlayer->setSomSozinho(false);
    mPlayer->setEnabled(false);
    connect(mPlayer, &JanelaLicao::proxima, this, &Previa::proxima);
    connect(mPlayer, &JanelaLicao::anterior, this, &Previa::anterior);
    mCena.addWidget(mPlayer);
    fit();
    return *mPlayer;
}

void Previa::mostra(const AulaVista &aula, const QString &titulo)
{
    mTitulo->setText(titulo);
    if (mShown == aula)
        return;
    mShown = aula;
    JanelaLicao &player = playerFor(aula.programa);
    player.setEnabled(false); // a lesson takes the focus where it can, and the editor has it
    if (aula.pagina.isEmpty())
        player.mostraLicao(aula.licao, {aula.primeira, aula.ultima});
    else
        player.mostraAviso(u"Página da internet"_s,
            u"Esta aula abre a página %1 no navegador e espera até que a janela se feche."_s.arg(aula.pagina), true);
    player.setEnabled(true);
}

void Previa::foca()
{
    mVista->setFocus();
}

void Previa::mostraNada(const QString &porque)
{
    mShown.reset();
    mTitulo->clear();
    JanelaLicao &player = playerFor(mPrograma);
    player.setEnabled(false);
    player.mostraAviso({}, porque, false);
    player.setEnabled(true);
}

} // namespace quorel
