#include "reports/grade.h"

#include "platform/twips.h"
#include "visual/aparencia.h"

#include <QFont>
#include <QHeaderView>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr std::array kLarguras{1700, 3250, 800, 740}; // twips
static constexpr int kColunas = int(kLarguras.size());
static constexpr int kColunaDosNomes = 1;
static constexpr int kAlturaDaLinha = 20; // pixels
static constexpr double kPontos = 9;

void ModeloPlanilha::setLinhas(std::vector<LinhaPlanilha> linhas)
{
    beginResetModel();
    mLinhas = std::move(linhas);
    endResetModel();
}

int ModeloPlanilha::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || mLinhas.empty() ? 0 : int(mLinhas.size()) - 1;
}

int ModeloPlanilha::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : kColunas;
}

static bool isTitle(const LinhaPlanilha &linha)
{
    // A Roteiro's name may be empty too, but then there are figures.
    return !linha[0].isEmpty() && linha[kColunaDosNomes].isEmpty() && linha[kColunaDosNomes + 1].isEmpty();
}

static bool isTotal(const LinhaPlanilha &linha)
{
    return linha[0].isEmpty() && !linha[kColunaDosNomes].isEmpty();
}

QVariant ModeloPlanilha::data(const QModelIndex &index, int role) const
{
    const LinhaPlanilha &linha = mLinhas[std::size_t(index.row()) + 1];
    const QString &text = linha[std::size_t(index.column())];
    switch (role) {
    case Qt::DisplayRole:
        return text;
    case Qt::ToolTipRole:
        // A long name is cut in its column. It may look like markup, so that it goes as markup of ours.
        return index.column() == kColunaDosNomes && !text.isEmpty()
            ? QVariant(u"<qt>%1</qt>"_s.arg(text.toHtmlEscaped()))
            : QVariant();
    case Qt::TextAlignmentRole:
        return int(index.column() > kColunaDosNomes ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::FontRole: {
        QFont font;
        font.setBold(isTitle(linha) || isTotal(linha));
        return font;
    }
    default:
        return {};
    }
}

QVariant ModeloPlanilha::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return mLinhas.empty() ? QString() : mLinhas.front()[std::size_t(section)];
    return QAbstractTableModel::headerData(section, orientation, role);
}

GrdRot::GrdRot(QWidget *parent) : QTableView(parent)
{
    setModel(&mModelo);
    setFont(fonte(Tipo::Sistema, kPontos));
    setAccessibleName(u"Planilha de acertos e erros"_s);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false); // Tab leaves the sheet; the arrows walk in it
    setAlternatingRowColors(true);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(kAlturaDaLinha);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    for (int column = 0; column < kColunas; ++column)
        setColumnWidth(column, pixels(kLarguras[std::size_t(column)]));
}

void GrdRot::setLinhas(std::vector<LinhaPlanilha> linhas)
{
    clearSpans();
    mModelo.setLinhas(std::move(linhas));
    for (int row = 0; row < mModelo.rowCount(); ++row) {
        if (isTitle(mModelo.linhas()[std::size_t(row) + 1]))
            setSpan(row, 0, 1, kColunas); // a discipline's name is wider than the dates
    }
}

} // namespace quorel
