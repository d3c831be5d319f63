#include "platform/caixas.h"

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

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
    for (QLabel *label : dialog.findChildren<QLabel *>())
        label->setTextFormat(Qt::PlainText);
    dialog.setTextValue(caixa.proposta);
    dialog.setOkButtonText(u"OK"_s);
    dialog.setCancelButtonText(u"Cancelar"_s);
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

} // namespace quorel
