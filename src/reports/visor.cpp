#include "reports/visor.h"

#include "reports/impressao.h"
#include "startup/texto_util.h"

namespace quorel {

using namespace Qt::StringLiterals;

WebBrowser::WebBrowser(int faixa, QWidget *parent) : QTextBrowser(parent)
{
    setAccessibleName(u"Página a imprimir"_s);
    setOpenLinks(false);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setContextMenuPolicy(Qt::NoContextMenu);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // a bar that comes later would lay the page out once more
    setViewportMargins(0, faixa, 0, 0);
}

WebBrowser::~WebBrowser()
{
    setDocument(nullptr); // back to one of its own
}

void WebBrowser::Navigate(const QString &caminho, const QStringList &figuras)
{
    mTexto = gTexto.LeArquivo(caminho);
    mFiguras.clear();
    for (const QString &figura : figuras)
        mFiguras.push_back(leFigura(figura));
    auto page = std::make_unique<DocumentoPagina>(mFiguras);
    setDocument(page.get()); // the empty one, or the page would be laid out before it has its width, and again
    mPagina = std::move(page);
    mPagina->setTexto(mTexto);
    moveCursor(QTextCursor::Start);
}

void WebBrowser::ExecWB()
{
    imprimePagina(mTexto, mFiguras, window());
}

} // namespace quorel
