#include "apoio.h"

#include "data/bd.h"
#include "data/consultas.h"
#include "data/errobd.h"
#include "platform/costuras.h"
#include "support/suporte.h"

#include <QDateTime>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorel;
using namespace quorel::teste;

class TstBd final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void logRowIsInTheFile();
};

void TstBd::init()
{
    failOnWarnings();
    reiniciaCosturas();
    reiniciaData();
}

void TstBd::logRowIsInTheFile()
{
    const Registro registro;
    registro.open();
    BoxScript boxes;
    gBD->Records_Set(consultas::logDoAluno(9999, 9999), u"RSLog"_s);
    QVERIFY(gBD->ExisteAlias(u"rslog"_s));
    for (int i = 1; i <= 2; ++i) {
        gBD->TransacaoInicio();
        gBD->RegistroAdiciona(u"RSLog"_s);
        QCOMPARE(gBD->PosicaoRegistroAtual(), 0);
        gBD->RegistroTroca(u"LG_Aluno"_s, 9999, u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Classe"_s, 9999, u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Data"_s, QDateTime({2026, 11, 24}, {10, 0, i, 500}), u"RSLog"_s);
        gBD->RegistroTroca(u"RO_Cod"_s, 7, u"RSLog"_s);
        gBD->RegistroTroca(u"LG_Resp"_s, u"Ciências<disc>Água<rot>A:"_s, u"RSLog"_s);
        gBD->RegistroAtualiza(u"RSLog"_s);
        gBD->TransacaoFim();
        gBD->ReAtualizaRecordSet(u"RSLog"_s);
    }
    QCOMPARE(gBD->NumeroTotalDeRegistros(u"RSLog"_s), 2);
    QCOMPARE(gBD->Campo(u"lg_data"_s, u"RSLog"_s), QVariant(QDateTime({2026, 11, 24}, {10, 0, 2})));
    gBD.reset();
    QCOMPARE(registro.sql(u"SELECT * FROM LG_LogAulas ORDER BY LG_Id"_s),
        (QStringList{u"9999|9999|2026-11-24 10:00:01|7|NULL|Ciências<disc>Água<rot>A:|1"_s,
            u"9999|9999|2026-11-24 10:00:02|7|NULL|Ciências<disc>Água<rot>A:|2"_s}));
}

QTEST_MAIN(TstBd)
#include "tst_bd.moc"
