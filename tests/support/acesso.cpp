#include "support/acesso.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace quorel::teste {

QList<QWidget *> controles(const QWidget &janela)
{
    QList<QWidget *> found;
    for (QWidget *widget : janela.findChildren<QWidget *>()) {
        if (!widget->objectName().isEmpty() && !widget->objectName().startsWith(QLatin1String("qt_")))
            found << widget;
    }
    return found;
}

void todosTemNome(const QWidget &janela)
{
    QVERIFY(!controles(janela).isEmpty());
    for (QWidget *controle : controles(janela)) {
        const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(controle);
        QVERIFY2(interface && !interface->text(QAccessible::Name).isEmpty(), qPrintable(controle->objectName()));
    }
}

QStringList voltaDoTab(QWidget &janela)
{
    janela.activateWindow();
    if (!QTest::qWaitForWindowActive(&janela))
        return {};
    if (!janela.focusWidget())
        QTest::keyClick(&janela, Qt::Key_Tab);
    QStringList names;
    for (QWidget *focus = QApplication::focusWidget(); focus && !names.contains(focus->objectName());) {
        names << focus->objectName();
        QTest::keyClick(focus, qobject_cast<QRadioButton *>(focus) ? Qt::Key_Down : Qt::Key_Tab);
        focus = QApplication::focusWidget();
        if (qobject_cast<QRadioButton *>(focus) && names.contains(focus->objectName())) {
            QTest::keyClick(focus, Qt::Key_Tab);
            focus = QApplication::focusWidget();
        }
    }
    return names;
}

void cabe(const QWidget &controle, const QString &texto, int margem)
{
    const QSize ink = controle.fontMetrics().tightBoundingRect(texto).size();
    QVERIFY2(ink.width() + margem <= controle.width() && ink.height() <= controle.height(),
        qPrintable(controle.objectName() + QLatin1String(": ") + texto));
}

void textosCabem(const QWidget &janela, int margem)
{
    for (const auto *rotulo : janela.findChildren<QLabel *>()) {
        const QRect room = rotulo->fontMetrics().boundingRect(rotulo->rect(), Qt::TextWordWrap, rotulo->text());
        QVERIFY2(rotulo->text().isEmpty() || rotulo->rect().contains(room.adjusted(0, 1, 0, -1)),
            qPrintable(rotulo->objectName()));
    }
    for (const auto *botao : janela.findChildren<QPushButton *>()) {
        cabe(*botao, QString(botao->text()).remove(u'&'), margem); // the mark of the key is not drawn
        QVERIFY2(botao->icon().isNull() || botao->iconSize().width() < botao->width(), qPrintable(botao->objectName()));
    }
}

} // namespace quorel::teste
