#include "oficina/editordefonte.h"

#include "visual/aparencia.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeData>
#include <QRegularExpression>
#include <QTextBlock>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr double kPontos = 11;
static constexpr QRgb kErro = 0xffffd6d6, kAviso = 0xfffff3c4; // grounds of the lines with a finding

EditorDeFonte::EditorDeFonte(QWidget *parent) : QPlainTextEdit(parent)
{
    setObjectName(u"TxtFonte"_s);
    setAccessibleName(u"Fonte do bloco"_s);
    setFont(fonte(Tipo::CourierNew, kPontos));
    setTabChangesFocus(true); // the source has no tabs, and the keyboard has to get out
    setAcceptDrops(true);
}

int EditorDeFonte::linha() const
{
    return textCursor().blockNumber() + 1;
}

void EditorDeFonte::vaiPara(const Place &lugar)
{
    const QTextBlock wanted = document()->findBlockByNumber(lugar.line - 1);
    const QTextBlock block = wanted.isValid() ? wanted : document()->lastBlock();
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, qBound(0, lugar.column - 1, block.length() - 1));
    setTextCursor(cursor);
    centerCursor();
    setFocus();
}

static bool opensSection(const QTextBlock &block)
{
    static const QRegularExpression form(u"^(AULA|ROTEIRO)\\b"_s, QRegularExpression::CaseInsensitiveOption);
    return form.match(block.text()).hasMatch();
}

void EditorDeFonte::insereAula(const QString &linhas)
{
    QTextBlock at = textCursor().block().next();
    while (at.isValid() && !opensSection(at))
        at = at.next();
    // Comments and empty lines above the next section are its own.
    const bool atEnd = !at.isValid();
    QTextCursor cursor(atEnd ? document()->lastBlock() : at);
    if (atEnd)
        cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    QString lead;
    if (atEnd && !document()->lastBlock().text().trimmed().isEmpty())
        lead = u"\n\n"_s;
    else if (atEnd && document()->blockCount() > 1)
        lead = u"\n"_s;
    cursor.insertText(lead);
    const int first = cursor.blockNumber() + 1;
    cursor.insertText(linhas.trimmed() + (atEnd ? u"\n"_s : u"\n\n"_s));
    cursor.endEditBlock();
    vaiPara({first, 1});
}

void EditorDeFonte::insereFigura(const QString &nome)
{
    static const QRegularExpression option(u"^\\s*[*=-]\\s"_s), former(u"\\s*@[^\\s@]*\\s*$"_s);
    QTextCursor cursor = textCursor();
    QTextBlock block = cursor.block();
    cursor.beginEditBlock();
    const auto setLine = [&](const QTextBlock &which, const QString &text) {
        cursor.setPosition(which.position());
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.insertText(text);
    };
    if (option.match(block.text()).hasMatch()) {
        setLine(block, QString(block.text()).remove(former) + u" @"_s + nome);
    } else if (block.text().startsWith(u"fig:"_s)) {
        setLine(block, u"fig: "_s + nome);
    } else {
        while (block.next().isValid() && block.next().text().startsWith(u' ')) // a text that goes on
            block = block.next();
        setLine(block, block.text().trimmed().isEmpty() ? u"fig: "_s + nome : block.text() + u"\nfig: "_s + nome);
    }
    cursor.endEditBlock();
    setTextCursor(cursor);
}

void EditorDeFonte::troca(const QString &texto)
{
    const int line = linha();
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(texto);
    cursor.endEditBlock();
    QTextCursor back(document()->findBlockByNumber(qMin(line, document()->blockCount()) - 1));
    setTextCursor(back);
}

void EditorDeFonte::mostraAchados(const Findings &achados)
{
    QList<QTextEdit::ExtraSelection> marks;
    for (const Finding &each : achados) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = QTextCursor(document()->findBlockByNumber(each.place.line - 1));
        mark.format.setBackground(QColor::fromRgb(each.severity == Severity::Error ? kErro : kAviso));
        mark.format.setProperty(QTextFormat::FullWidthSelection, true);
        if (each.severity != Severity::Note && !mark.cursor.isNull())
            marks += mark;
    }
    setExtraSelections(marks);
}

/// The picture file that is being dropped; empty for anything else.
static QString pictureIn(const QMimeData *data)
{
    const QList<QUrl> urls = data->urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return {};
    const QString path = urls.first().toLocalFile();
    return QImageReader::imageFormat(path).isEmpty() ? QString() : path;
}

void EditorDeFonte::dragEnterEvent(QDragEnterEvent *event)
{
    if (pictureIn(event->mimeData()).isEmpty())
        QPlainTextEdit::dragEnterEvent(event);
    else
        event->acceptProposedAction();
}

void EditorDeFonte::dragMoveEvent(QDragMoveEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
    else
        QPlainTextEdit::dragMoveEvent(event);
}

void EditorDeFonte::dropEvent(QDropEvent *event)
{
    const QString path = pictureIn(event->mimeData());
    if (path.isEmpty())
        return QPlainTextEdit::dropEvent(event);
    setTextCursor(cursorForPosition(event->position().toPoint()));
    event->acceptProposedAction();
    emit fotoSolta(path);
}

} // namespace quorel
