#include "platform/caixas.h"

#include <QApplication>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSpacerItem>

#include <algorithm>
#include <cstdio>

namespace quorel {

using namespace Qt::StringLiterals;

static QMessageBox::Icon iconOf(Icone icone)
{
    switch (icone) {
    case Icone::Informacao:
        return QMessageBox::Information;
    case Icone::Pergunta:
        return QMessageBox::Question;
    case Icone::Aviso:
        return QMessageBox::Warning;
    case Icone::Critico:
        return QMessageBox::Critical;
    case Icone::Nenhum:
        break;
    }
    return QMessageBox::NoIcon;
}

/// Line ends as labels know them.
static QString labelText(const QString &text)
{
    return QString(text).replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

/// Programs without windows have no boxes: their texts go where their errors go.
static bool hasWindows()
{
    return qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr;
}

static void printText(const QString &text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

static QWidget *boxOwner()
{
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : QApplication::activeWindow();
}

/// What closing a box without choosing a button answers.
static Resposta unanswered(Botoes botoes)
{
    switch (botoes) {
    case Botoes::SimNao:
        return Resposta::Nao;
    case Botoes::OkCancela:
        return Resposta::Cancela;
    case Botoes::Ok:
        break;
    }
    return Resposta::Ok;
}

/// A width in pixels, as far as the screen has room for it in a window.
static int onScreen(const QWidget &box, int width)
{
    constexpr int kFrame = 40; // pixels that the window takes beside its contents
    return std::min(width, box.screen()->availableGeometry().width() - kFrame);
}

/// Width in pixels that a box needs for its title bar to show the whole title. The desktop paints titles in a font of
/// its own, often a bold one, between an icon and its buttons.
static int titleWidth(const QWidget &box)
{
    constexpr int kBeside = 120; // pixels: icon, three buttons and what lies between them
    QFont bold = QApplication::font();
    bold.setBold(true);
    return onScreen(box, QFontMetrics(bold).horizontalAdvance(box.windowTitle()) + kBeside);
}

/// Width in pixels that an input box needs for its text box to show the whole proposal.
static int proposalWidth(const QWidget &box, const QString &proposta)
{
    constexpr int kBeside = 24; // pixels: borders, margins and the cursor
    return onScreen(box, box.fontMetrics().horizontalAdvance(proposta) + kBeside);
}

/// A message box computes its size from its layout each time that it is shown: only a row in it makes it wider.
static void widenForTitle(QMessageBox &box)
{
    if (auto *grid = qobject_cast<QGridLayout *>(box.layout()))
        grid->addItem(new QSpacerItem(titleWidth(box), 0), grid->rowCount(), 0, 1, grid->columnCount());
}

static Resposta askYesNo(QMessageBox &box)
{
    QPushButton *sim = box.addButton(u"Sim"_s, QMessageBox::YesRole);
    QPushButton *nao = box.addButton(u"Não"_s, QMessageBox::NoRole);
    sim->setShortcut(Qt::Key_S);
    nao->setShortcut(Qt::Key_N);
    box.setDefaultButton(sim);
    box.setEscapeButton(nao);
    box.exec();
    return box.clickedButton() == sim ? Resposta::Sim : Resposta::Nao;
}

Resposta mostraCaixa(const Caixa &caixa)
{
    if (!hasWindows()) {
        printText(caixa.texto);
        return unanswered(caixa.botoes);
    }
    QMessageBox box(boxOwner());
    box.setWindowTitle(caixa.titulo);
    box.setTextFormat(Qt::PlainText);
    box.setText(labelText(caixa.texto));
    box.setIcon(iconOf(caixa.icone));
    widenForTitle(box);
    if (caixa.botoes == Botoes::SimNao)
        return askYesNo(box);
    QPushButton *ok = box.addButton(u"OK"_s, QMessageBox::AcceptRole);
    box.setDefaultButton(ok);
    if (caixa.botoes == Botoes::OkCancela)
        box.setEscapeButton(box.addButton(u"Cancelar"_s, QMessageBox::RejectRole));
    else
        box.setEscapeButton(ok);
    box.exec();
    return box.clickedButton() == ok ? Resposta::Ok : Resposta::Cancela;
}

QString pedeTexto(const CaixaTexto &caixa)
{
    if (!hasWindows()) {
        printText(caixa.texto);
        return {};
    }
    QInputDialog dialog(boxOwner());
    dialog.setWindowTitle(caixa.titulo);
    dialog.setLabelText(labelText(caixa.texto));
    for (QLabel *label : dialog.findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        label->setMinimumWidth(std::max(titleWidth(dialog),
            proposalWidth(dialog, caixa.proposta))); // the dialogue takes its own least width from its layout
    }
    dialog.setTextValue(caixa.proposta);
    dialog.setOkButtonText(u"OK"_s);
    dialog.setCancelButtonText(u"Cancelar"_s);
    for (QPushButton *button : dialog.findChildren<QPushButton *>())
        button->setIcon(QIcon()); // as in the message boxes
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

} // namespace quorel
