#include "licao/editor.h"

#include "licao/aparencia.h"
#include "platform/costuras.h"

#include <QButtonGroup>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QPainter>
#include <QPushButton>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

struct CorRec
{
    QRgb cor;
    QStringView nome;
};

constexpr CorRec kCores[] = {
    {0xFF000000, u"Preto"},
    {0xFF7A7A7A, u"Cinza"},
    {0xFF8B4A1E, u"Marrom"},
    {0xFFD32020, u"Vermelho"},
    {0xFFF57C00, u"Laranja"},
    {0xFFFFD600, u"Amarelo"},
    {0xFF2E9E3A, u"Verde"},
    {0xFF8BD450, u"Verde-claro"},
    {0xFF1565C0, u"Azul"},
    {0xFF4FC3F7, u"Azul-claro"},
    {0xFF8E24AA, u"Roxo"},
    {0xFFF48FB1, u"Rosa"},
};
constexpr int kCoresPorLinha = 3;
constexpr int kLadoCor = 36; // pixels

struct FerramentaRec
{
    Ferramenta ferramenta;
    QStringView nome;
};

constexpr FerramentaRec kFerramentas[] = {
    {Ferramenta::Lapis, u"Lápis"},
    {Ferramenta::Borracha, u"Borracha"},
    {Ferramenta::Balde, u"Balde"},
};

struct EspessuraRec
{
    int pixels;
    QStringView nome;
};

constexpr EspessuraRec kEspessuras[] = {{2, u"Fino"}, {5, u"Médio"}, {12, u"Grosso"}};

/// How a chosen tool looks: filled as well as framed.
constexpr char16_t kFolhaFerramenta[] =
    u"QPushButton { padding: 3px 6px; font-size: 16px; min-height: 26px; color: #1B2430; border: 2px solid #7B8794; }"
    u"QPushButton:checked { background: #FFE08A; border: 3px solid #1B2430; }"
    u"QPushButton:focus { border: 3px dashed #111827; }";

QPushButton *toolButton(const QString &face, const QString &nome, QWidget *parent)
{
    auto *button = new QPushButton(face, parent);
    button->setCheckable(true);
    button->setAccessibleName(nome);
    button->setToolTip(nome);
    button->setStyleSheet(QString::fromUtf16(kFolhaFerramenta));
    return button;
}

/// A disc as wide as the pencil.
QIcon dot(int pixels)
{
    constexpr int kLado = 20; // pixels
    QPixmap pixmap(kLado, kLado);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor::fromRgb(cores::kTexto));
    painter.drawEllipse(QPointF(kLado / 2.0, kLado / 2.0), pixels / 2.0 + 1, pixels / 2.0 + 1);
    return QIcon(pixmap);
}

QString swatchSheet(QRgb cor)
{
    return u"QPushButton { background: %1; border: 2px solid #7B8794; border-radius: 6px; padding: 0; min-height: 0; }"
           u"QPushButton:checked { border: 5px double #111827; }"
           u"QPushButton:focus { border: 4px dashed #111827; }"_s.arg(QColor::fromRgb(cor).name());
}

/// The question for the file, in Portuguese on every desktop. @return empty when it was cancelled
QString askFile(QWidget *parent)
{
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    QFileDialog dialog(
        parent, u"Salvar o desenho"_s, QDir(pictures).exists() ? pictures : QDir::homePath(), u"Imagens PNG (*.png)"_s);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"png"_s);
    dialog.selectFile(u"desenho.png"_s);
    dialog.setLabelText(QFileDialog::LookIn, u"Pasta:"_s);
    dialog.setLabelText(QFileDialog::FileName, u"Nome do arquivo:"_s);
    dialog.setLabelText(QFileDialog::FileType, u"Tipo:"_s);
    dialog.setLabelText(QFileDialog::Accept, u"Salvar"_s);
    dialog.setLabelText(QFileDialog::Reject, u"Cancelar"_s);
    return dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty() ? dialog.selectedFiles().first()
                                                                                   : QString();
}

} // namespace

Editor::Editor(QWidget *parent) : QWidget(parent), mTela(new Tela(this))
{
    setObjectName(u"Editor"_s);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(10);
    grid->addWidget(buildTools(), 0, 0, 2, 1);
    grid->addWidget(mTela, 0, 1);
    grid->addLayout(buildActions(), 1, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(0, 1);
}

QWidget *Editor::buildTools()
{
    auto *tools = new QWidget(this);
    auto *grid = new QGridLayout(tools);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(6);
    int row = 0;
    auto *toolGroup = new QButtonGroup(tools);
    for (const auto &[ferramenta, nome] : kFerramentas) {
        auto *button = toolButton(nome.toString(), nome.toString(), tools);
        button->setObjectName(u"Ferramenta%1"_s.arg(row));
        button->setChecked(ferramenta == Ferramenta::Lapis);
        toolGroup->addButton(button);
        connect(button, &QPushButton::clicked, mTela, [this, f = ferramenta] { mTela->setFerramenta(f); });
        grid->addWidget(button, row++, 0, 1, kCoresPorLinha);
    }
    auto *widthGroup = new QButtonGroup(tools);
    for (int n = 0; n < int(std::size(kEspessuras)); ++n) {
        const auto &[pixels, nome] = kEspessuras[n];
        auto *button = toolButton({}, u"Traço "_s + nome.toString().toLower(), tools);
        button->setIcon(dot(pixels));
        button->setChecked(n == 1);
        widthGroup->addButton(button);
        connect(button, &QPushButton::clicked, mTela, [this, w = pixels] { mTela->setEspessura(w); });
        grid->addWidget(button, row, n);
    }
    ++row;
    auto *colorGroup = new QButtonGroup(tools);
    for (int n = 0; n < int(std::size(kCores)); ++n) {
        const auto &[cor, nome] = kCores[n];
        auto *button = toolButton({}, nome.toString(), tools);
        button->setObjectName(u"Cor%1"_s.arg(n));
        button->setStyleSheet(swatchSheet(cor));
        button->setFixedSize(kLadoCor, kLadoCor);
        button->setChecked(n == 0);
        colorGroup->addButton(button);
        connect(button, &QPushButton::clicked, mTela, [this, c = cor] { mTela->setCor(QColor::fromRgb(c)); });
        grid->addWidget(button, row + n / kCoresPorLinha, n % kCoresPorLinha);
    }
    grid->setRowStretch(row + int(std::size(kCores)) / kCoresPorLinha, 1);
    return tools;
}

QBoxLayout *Editor::buildActions()
{
    auto *row = new QHBoxLayout;
    mDesfaz = new QPushButton(u"Desfazer"_s, this);
    mDesfaz->setObjectName(u"CmdDesfazer"_s);
    mDesfaz->setShortcut(QKeySequence::Undo);
    mDesfaz->setEnabled(false);
    auto *empty = new QPushButton(u"Folha nova"_s, this);
    empty->setObjectName(u"CmdLimpar"_s);
    auto *save = new QPushButton(u"Salvar…"_s, this);
    save->setObjectName(u"CmdSalvar"_s);
    save->setShortcut(QKeySequence::Save);
    for (QPushButton *button : {mDesfaz, empty, save}) {
        button->setAutoDefault(true);
        row->addWidget(button);
    }
    row->addStretch();
    connect(mDesfaz, &QPushButton::clicked, mTela, &Tela::desfaz);
    connect(empty, &QPushButton::clicked, mTela, &Tela::limpa);
    connect(save, &QPushButton::clicked, this, &Editor::askAndSave);
    connect(mTela, &Tela::mudou, this, [this] { mDesfaz->setEnabled(mTela->podeDesfazer()); });
    return row;
}

void Editor::askAndSave()
{
    if (const QString path = askFile(this); !path.isEmpty())
        salva(path);
}

bool Editor::salva(const QString &native)
{
    const QString path = native.endsWith(".png"_L1, Qt::CaseInsensitive) ? native : native + u".png"_s;
    if (mTela->imagem().copy(mTela->rect()).save(path, "PNG"))
        return true;
    caixa({.texto = u"Não foi possível salvar o desenho em\n"_s + path,
        .titulo = u"Salvar o desenho"_s,
        .icone = Icone::Aviso});
    return false;
}

} // namespace quorel
