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

Resposta mostraCaixa(const Caixa &caixa)
{
    const bool choice = caixa.botoes == Botoes::SimNao;
    if (!hasWindows()) {
        printText(caixa.texto);
        return choice ? Resposta::Nao : Resposta::Ok;
    }
    QMessageBox box(boxOwner());
    box.setWindowTitle(caixa.titulo);
    box.setTextFormat(Qt::PlainText);
    box.setText(labelText(caixa.texto));
    box.setIcon(iconOf(caixa.icone));
    if (!choice) {
        box.setEscapeButton(box.addButton(u"OK"_s, QMessageBox::AcceptRole));
        box.exec();
        return Resposta::Ok;
    }
    QPushButton *sim = box.addButton(u"Sim"_s, QMessageBox::YesRole);
    QPushButton *nao = box.addButton(u"Não"_s, QMessageBox::NoRole);
    sim->setShortcut(Qt::Key_S);
    nao->setShortcut(Qt::Key_N);
    box.setDefaultButton(sim);
    box.setEscapeButton(nao);
    box.exec();
    return box.clickedButton() == sim ? Resposta::Sim : Resposta::Nao;
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
