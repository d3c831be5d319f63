#include "oficina/escolhafigura.h"

#include <QAbstractListModel>
#include <QDialogButtonBox>
#include <QDirIterator>
#include <QIcon>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

constexpr QSize kMiniatura(96, 72); // pixels
constexpr QSize kCelula(124, 104);
constexpr QSize kJanela(720, 480);

/// Names and files; the pictures are read when they are asked for.
class Figuras final : public QAbstractListModel
{
public:
    Figuras(const QString &raiz, QObject *parent) : QAbstractListModel(parent)
    {
        QDirIterator walk(raiz, {u"*.gif"_s, u"*.bmp"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext())
            mFiles.push_back({QFileInfo(walk.next()).completeBaseName(), walk.filePath(), {}});
        std::ranges::sort(mFiles, [](const File &a, const File &b) {
            return std::pair(a.name.toUpper(), a.path) < std::pair(b.name.toUpper(), b.path);
        });
    }

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : int(mFiles.size()); }
    QVariant data(const QModelIndex &index, int role) const override
    {
        File &file = mFiles[std::size_t(index.row())];
        if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
            return file.name;
        if (role != Qt::DecorationRole)
            return {};
        if (file.icon.isNull())
            file.icon = thumbnail(file.path);
        return file.icon;
    }

private:
    struct File
    {
        QString name, path;
        QPixmap icon;
    };
    static QPixmap thumbnail(const QString &path)
    {
        QImage image = QImageReader(path).read();
        if (image.isNull())
            image = QImage(1, 1, QImage::Format_Mono); // damaged: an empty place
        return QPixmap::fromImage(image.scaled(kMiniatura, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    }

    mutable std::vector<File> mFiles;
};

} // namespace

EscolhaFigura::EscolhaFigura(const QString &raiz, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"EscolhaFigura"_s);
    setWindowTitle(u"Escolher figura"_s);
    resize(kJanela);
    mBusca = new QLineEdit(this);
    mBusca->setObjectName(u"TxtBusca"_s);
    mBusca->setPlaceholderText(u"Procurar pelo nome"_s);
    mBusca->setAccessibleName(u"Procurar pelo nome"_s);
    mVistas = new QSortFilterProxyModel(this);
    mVistas->setSourceModel(new Figuras(raiz, this));
    mVistas->setFilterCaseSensitivity(Qt::CaseInsensitive);
    mLista = new QListView(this);
    mLista->setObjectName(u"LstFiguras"_s);
    mLista->setAccessibleName(u"Figuras"_s);
    mLista->setViewMode(QListView::IconMode);
    mLista->setIconSize(kMiniatura);
    mLista->setGridSize(kCelula);
    mLista->setUniformItemSizes(true);
    mLista->setMovement(QListView::Static);
    mLista->setResizeMode(QListView::Adjust);
    mLista->setModel(mVistas);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *choose = buttons->addButton(u"&Usar"_s, QDialogButtonBox::AcceptRole);
    QPushButton *bring = buttons->addButton(u"&Trazer uma foto…"_s, QDialogButtonBox::ActionRole);
    buttons->addButton(u"&Cancelar"_s, QDialogButtonBox::RejectRole);
    choose->setObjectName(u"CmdUsar"_s);
    bring->setObjectName(u"CmdTrazer"_s);
    choose->setEnabled(false);
    auto *column = new QVBoxLayout(this);
    column->addWidget(mBusca);
    column->addWidget(mLista, 1);
    column->addWidget(buttons);
    const auto first = [this] {
        if (!mLista->currentIndex().isValid() && mVistas->rowCount() > 0)
            mLista->setCurrentIndex(mVistas->index(0, 0));
    };
    connect(mBusca, &QLineEdit::textChanged, this, [this, first](const QString &text) {
        mVistas->setFilterFixedString(text);
        first();
    });
    connect(mLista->selectionModel(), &QItemSelectionModel::currentChanged, this,
        [choose](const QModelIndex &now) { choose->setEnabled(now.isValid()); });
    connect(mLista, &QListView::activated, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(bring, &QPushButton::clicked, this, [this] {
        reject();
        emit novaFoto();
    });
}

QString EscolhaFigura::nome() const
{
    return mLista->currentIndex().data(Qt::DisplayRole).toString();
}

} // namespace quorel
