#include "oficina/editordefonte.h"
#include "oficina/janelaoficina.h"
#include "oficina/previa.h"

#include "licao/midia.h"
#include "platform/caminho.h"
#include "startup/quorel_zeto.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr QSize kTamanho(1180, 740), kMenor(900, 520), kMoldura(10, 36); // pixels
static constexpr int kAlturaAchados = 76, kMargem = 6;

namespace {

struct BotaoDeTipo
{
    Kind kind;
    QStringView nome, face, dica;
};
constexpr std::array<BotaoDeTipo, 7> kTipos{{
    {Kind::Leia, u"CmdLeia", u"Leia", u"Insere uma página para ler (Ctrl+1)"},
    {Kind::Escolha, u"CmdEscolha", u"Escolha", u"Insere uma pergunta de uma só opção certa (Ctrl+2)"},
    {Kind::Marque, u"CmdMarque", u"Marque", u"Insere uma pergunta de várias opções certas (Ctrl+3)"},
    {Kind::Escreva, u"CmdEscreva", u"Escreva", u"Insere uma pergunta de resposta escrita (Ctrl+4)"},
    {Kind::Ordene, u"CmdOrdene", u"Ordene", u"Insere opções para pôr em ordem (Ctrl+5)"},
    {Kind::Desenhe, u"CmdDesenhe", u"Desenhe", u"Insere uma folha para desenhar (Ctrl+6)"},
    {Kind::Historia, u"CmdHistoria", u"História", u"Insere uma história em páginas (Ctrl+7)"},
}};

QPushButton *newButton(const QString &name, const QString &face, const QString &tip, QWidget *parent)
{
    auto *made = new QPushButton(face, parent);
    made->setObjectName(name);
    made->setToolTip(tip);
    made->setAccessibleDescription(tip);
    made->setAutoDefault(false);
    return made;
}

Midia mediaOf(bool comMidia)
{
    if (!comMidia)
        return {[](const QString &) { return QString(); }, [](const QString &) { return QString(); }};
    return {[](const QString &nome) { return nativePath(gConfig.N_Fig(nome)); },
        [](const QString &nome) { return nativePath(gConfig.N_Som(nome)); }};
}

} // namespace

QWidget *JanelaOficina::buildButtons()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    auto *roteiro = newButton(u"CmdRoteiro"_s, u"&Roteiro"_s, u"Insere um roteiro novo no fim"_s, bar);
    connect(roteiro, &QPushButton::clicked, this, &JanelaOficina::insertRoteiro);
    row->addWidget(roteiro);
    for (const BotaoDeTipo &each : kTipos) {
        auto *button = newButton(each.nome.toString(), each.face.toString(), each.dica.toString(), bar);
        connect(button, &QPushButton::clicked, this, [this, kind = each.kind] { insertAula(kind); });
        row->addWidget(button);
    }
    auto *figure = newButton(u"CmdFigura"_s, u"&Figura…"_s, u"Escolhe uma figura para esta linha (Ctrl+G)"_s, bar);
    figure->setEnabled(mComMidia);
    connect(figure, &QPushButton::clicked, this, &JanelaOficina::chooseFigure);
    row->addWidget(figure);
    row->addStretch();
    mSalva = newButton(u"CmdSalvar"_s, u"&Salvar"_s, u"Grava a fonte e faz o bloco dela (Ctrl+S)"_s, bar);
    connect(mSalva, &QPushButton::clicked, this, &JanelaOficina::save);
    row->addWidget(mSalva);
    return bar;
}

QWidget *JanelaOficina::buildNotice()
{
    mAviso = new QWidget(this);
    mAviso->setObjectName(u"PnlAviso"_s);
    auto *row = new QHBoxLayout(mAviso);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(
        new QLabel(u"Outro programa gravou este arquivo, e aqui há mudanças que não foram salvas."_s, mAviso));
    row->addStretch();
    mRecarrega =
        newButton(u"CmdRecarregar"_s, u"&Usar o do outro programa"_s, u"O que foi escrito aqui se perde"_s, mAviso);
    mFica = newButton(u"CmdFicar"_s, u"Ficar com &este"_s, u"Ao salvar, o do outro programa se perde"_s, mAviso);
    row->addWidget(mRecarrega);
    row->addWidget(mFica);
    mAviso->hide();
    return mAviso;
}

void JanelaOficina::buildLayout()
{
    setObjectName(u"Oficina"_s);
    setMinimumSize(kMenor);
    resize(kTamanho.boundedTo(screen()->availableSize() - kMoldura));
    mEditor = new EditorDeFonte(this);
    mPrevia = new Previa(mediaOf(mComMidia), this);
    auto *halves = new QSplitter(Qt::Horizontal, this);
    halves->addWidget(mEditor);
    halves->addWidget(mPrevia);
    halves->setChildrenCollapsible(false);
    halves->setSizes({width() - width() / 2 - kMargem, width() / 2});
    mAchados = new QListWidget(this);
    mAchados->setObjectName(u"LstAchados"_s);
    mAchados->setAccessibleName(u"O que há para consertar"_s);
    mAchados->setFixedHeight(kAlturaAchados);
    mRodape = new QLabel(this);
    mRodape->setObjectName(u"LblRodape"_s);
    mRodape->setTextFormat(Qt::PlainText);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(kMargem, kMargem, kMargem, kMargem);
    column->setSpacing(kMargem);
    column->addWidget(buildButtons());
    column->addWidget(buildNotice());
    column->addWidget(halves, 1);
    column->addWidget(mAchados);
    column->addWidget(mRodape);
}

void JanelaOficina::addKeys()
{
    const auto key = [this](const QKeySequence &keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    key(QKeySequence::Save, [this] { save(); });
    key(Qt::CTRL | Qt::Key_G, [this] { chooseFigure(); });
    key(Qt::CTRL | Qt::Key_PageUp, [this] { goToAula(-1); });
    key(Qt::CTRL | Qt::Key_PageDown, [this] { goToAula(1); });
    key(Qt::Key_F6, [this] {
        if (mEditor->hasFocus())
            mPrevia->foca();
        else
            mEditor->setFocus();
    });
    key(Qt::Key_F4, [this] { nextFinding(); });
    for (std::size_t i = 0; i < kTipos.size(); ++i)
        key(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + int(i))), [this, i] { insertAula(kTipos[i].kind); });
}

} // namespace quorel
