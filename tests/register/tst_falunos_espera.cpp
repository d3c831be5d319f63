#include "cenario_cadastro.h"

#include "data/bd.h"
#include "data/linha_log.h"
#include "data/pendentes.h"
#include "platform/costuras.h"

#include <QLabel>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The register's window on a machine where answers wait.
class TstFAlunosEspera : public QObject
{
    Q_OBJECT
private slots:
    void tellsHowManyRowsWait();
};

void TstFAlunosEspera::tellsHowManyRowsWait()
{
    CenarioCadastro c;
    auto &label = child<QLabel>(c.alunos(), u"LblEspera"_s);
    QVERIFY(label.isHidden());
    for (const QString &text : {u"1 aula espera nesta máquina."_s, u"2 aulas esperam nesta máquina."_s}) {
        gBD->waitingRows().keep({.uuid = text, .data = agora()}, {});
        c.alunos().close();
        c.alunos().mostra();
        QCOMPARE(label.text(), text);
        QVERIFY(label.isVisible());
    }
}

QTEST_MAIN(TstFAlunosEspera)
#include "tst_falunos_espera.moc"
