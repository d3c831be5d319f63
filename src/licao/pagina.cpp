#include "licao/pagina.h"

#include "licao/aparencia.h"
#include "licao/readingtools.h"
#include "licao/typesize.h"
#include "platform/som.h"

#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr QSize kMaxFigura(320, 260); // pixels
static constexpr int kMaxAumento = 2; // how many times its size a small figure may take
static constexpr int kMaxTexto = 20000; // characters shown of one text
static constexpr int kLadoIcone = 24; // pixels

static QLabel *textLabel(const QString &texto, int letra, bool negrito, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setText(quebravel(texto.size() > kMaxTexto ? texto.first(kMaxTexto) + u'…' : texto));
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    setType(*label, letra, negrito);
    return label;
}

static QLabel *figureLabel(const QPixmap &figura, const QString &nome, QWidget *parent)
{
    auto *label = new QLabel(parent);
    const QSize size = figura.size().scaled(kMaxFigura, Qt::KeepAspectRatio).boundedTo(figura.size() * kMaxAumento);
    const double dense = parent->devicePixelRatioF(); // drawn larger, it is scaled from its own pixels once
    QPixmap shown = figura.scaled(size * dense, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    shown.setDevicePixelRatio(dense);
    label->setPixmap(shown);
    label->setAccessibleName(u"Figura "_s + nome);
    label->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    return label;
}

Pagina::Pagina(std::span<const PecaRec> pecas, const Midia &midia, bool semTitulo, bool estreita, QWidget *parent)
    : QWidget(parent)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(14);
    for (const PecaRec &peca : pecas) {
        addPiece(peca, midia, !semTitulo, estreita);
        semTitulo = false;
    }
}

void Pagina::addPiece(const PecaRec &peca, const Midia &midia, bool comTitulo, bool estreita)
{
    auto *column = static_cast<QBoxLayout *>(layout());
    if (comTitulo && !peca.Titulo.isEmpty()) {
        column->addWidget(textLabel(peca.Titulo, kLetraTitulo, true, this));
        mVazia = false;
    }
    const QPixmap figura = peca.Fig.isEmpty() ? QPixmap() : QPixmap(midia.figura(peca.Fig));
    auto *row = new QBoxLayout(estreita ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    row->setSpacing(18);
    column->addLayout(row);
    if (!figura.isNull()) {
        row->addWidget(figureLabel(figura, peca.Fig, this));
        mVazia = false;
    }
    auto *texts = new QVBoxLayout;
    row->addLayout(texts, 1);
    if (!peca.Texto.isEmpty()) {
        texts->addWidget(textLabel(peca.Texto, kLetraTexto, false, this));
        mVazia = false;
    }
    if (const QString som = peca.Som.isEmpty() ? QString() : midia.som(peca.Som); !som.isEmpty())
        addSound(som, *texts);
    texts->addStretch();
}

void Pagina::addSound(const QString &path, QBoxLayout &column)
{
    if (mSom.isEmpty())
        mSom = path;
    auto *button = new QPushButton(loudspeaker(cores::kTexto, kLadoIcone), u"Ouvir"_s, this);
    button->setObjectName(u"CmdOuvir"_s);
    button->setIconSize({kLadoIcone, kLadoIcone});
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, [path] { playSound(path); });
    column.addWidget(button, 0, Qt::AlignLeft);
    mVazia = false;
}

void Pagina::toca() const
{
    if (!mSom.isEmpty())
        playSound(mSom);
}

} // namespace quorel
