#include "catalogue/lista_selecionada.h"

#include "catalogue/estado.h"
#include "platform/caminho.h"
#include "platform/sistema.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"

#include <QDir>
#include <QTemporaryDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

class TstListaSelecionada : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void whereItIsRead_data();
    void whereItIsRead();
    void endOfSelection_data();
    void endOfSelection();
    void writesWhereTheKeySaysOnly();
    void mayRun_data();
    void mayRun();

private:
    QString configurado() const { return mDir->filePath(u"dir/RotSelec.cfg"_s); }
    QString local() const { return nativePath(windowsDirectory()) + u"/QUOREL2001/RotSelec.cfg"_s; }

    std::unique_ptr<QTemporaryDir> mDir;
};

void TstListaSelecionada::init()
{
    failOnWarnings();
    reiniciaCatalogue();
    gConfig = Quorel_Zeto();
    mDir = std::make_unique<QTemporaryDir>();
    QFile::remove(local());
    QDir().mkpath(QFileInfo(configurado()).path());
    QDir().mkpath(QFileInfo(local()).path());
    gConfig.SetaCFG(u"[zeto]\r\nDIRQUOREL="_s + barras(mDir->filePath(u"dir"_s)));
}

void TstListaSelecionada::whereItIsRead_data()
{
    QTest::addColumn<bool>("key");
    QTest::addColumn<bool>("first");
    QTest::addColumn<bool>("second");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the configured one") << true << true << true << u"1\r\n"_s;
    QTest::newRow("it does not exist: the other") << true << false << true << u"2\r\n"_s;
    QTest::newRow("no key: the other") << false << true << true << u"2\r\n"_s;
    QTest::newRow("kept: neither, the list stays") << true << false << false << u"antiga"_s;
}

void TstListaSelecionada::whereItIsRead()
{
    QFETCH(bool, key);
    QFETCH(bool, first);
    QFETCH(bool, second);
    if (!key)
        gConfig.SetaCFG(u"[zeto]"_s);
    if (first)
        escreve(configurado(), "1\r\n");
    if (second)
        escreve(local(), "2\r\n");
    gRotSelec = u"antiga"_s;
    leListaSelecionada();
    QTEST(gRotSelec, "expected");
}

void TstListaSelecionada::endOfSelection_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QList<int>>("clicks");
    QTest::addColumn<bool>("yes");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("a new list, yes") << QByteArray("7\r\n") << QList<int>{12610, 5, 5} << true
                                     << QByteArray("12610\r\n5\r\n5\r\n");
    QTest::newRow("a new list, no: the former one is back")
        << QByteArray("7\r\n") << QList<int>{5} << false << QByteArray("7\r\n");
    QTest::newRow("no click, yes: an empty file, not deleted")
        << QByteArray("7\r\n") << QList<int>{} << true << QByteArray();
    QTest::newRow("no click, no") << QByteArray("7\r\n") << QList<int>{} << false << QByteArray("7\r\n");
}

void TstListaSelecionada::endOfSelection()
{
    QFETCH(QByteArray, before);
    QFETCH(QList<int>, clicks);
    QFETCH(bool, yes);
    QFETCH(QByteArray, after);
    escreve(configurado(), before);
    gRotSelec = u"7\r\n"_s;
    iniciaSelecao();
    QVERIFY(gSelecionando);
    QCOMPARE(gRotSelec, QString());
    for (const int cod : clicks) {
        BoxScript boxes{Resposta::Ok};
        incluiRoteiro(cod);
        QCOMPARE(
            boxes.last(), (Caixa{u"Roteiro Incluído"_s, u"Selecionador de Roteiros"_s, Icone::Informacao, Botoes::Ok}));
    }
    QCOMPARE(le(configurado()), before);
    BoxScript boxes{yes ? Resposta::Sim : Resposta::Nao};
    terminaSelecao();
    const QString texto = clicks.isEmpty() ? u"Confirma a exclusão da lista dos Roteiros Selecionado"_s
                                           : u"Confirma a substituição da lista dos Roteiros Selecionado"_s;
    const QString titulo = clicks.isEmpty() ? u"Exclusão da Lista"_s : u"Substituição da Lista"_s;
    QCOMPARE(boxes.last(), (Caixa{texto, titulo, Icone::Informacao, Botoes::SimNao}));
    QVERIFY(QFile::exists(configurado()));
    QCOMPARE(le(configurado()), after);
    QCOMPARE(gRotSelec, QString::fromLatin1(after));
    QVERIFY(!gSelecionando);
}

void TstListaSelecionada::writesWhereTheKeySaysOnly()
{
    QDir(mDir->filePath(u"dir"_s)).removeRecursively();
    gRotSelec = u"9\r\n"_s;
    gSelecionando = true;
    BoxScript boxes{Resposta::Sim}; // the directory is gone: the write fails, nobody is told
    terminaSelecao();
    QVERIFY(!QFile::exists(local()));
    QCOMPARE(gRotSelec, u"9\r\n"_s);

    gConfig.SetaCFG(u"[zeto]"_s);
    BoxScript again{Resposta::Sim};
    terminaSelecao();
    QCOMPARE(le(local()), QByteArray("9\r\n"));
}

void TstListaSelecionada::mayRun_data()
{
    QTest::addColumn<QString>("lista");
    QTest::addColumn<bool>("may");
    QTest::newRow("no list") << QString() << true;
    QTest::newRow("listed") << u"5\r\n261\r\n"_s << true;
    QTest::newRow("kept: part of a longer code") << u"12610\r\n"_s << true;
    QTest::newRow("LF alone, with blanks") << u"5 \n 261 \n"_s << true;
    QTest::newRow("not listed") << u"26\r\n1\r\n"_s << false;
    QTest::newRow("a blank line is a list in force") << u"\r\n"_s << false;
}

void TstListaSelecionada::mayRun()
{
    QFETCH(QString, lista);
    QFETCH(bool, may);
    gRotSelec = lista;
    if (may) {
        QVERIFY(autorizaRoteiro(261));
        return;
    }
    BoxScript boxes{Resposta::Ok};
    QVERIFY(!autorizaRoteiro(261));
    QCOMPARE(boxes.last(),
        (Caixa{u"Roteiro não autorizado"_s, u"Selecionador de Roteiros"_s, Icone::Informacao, Botoes::Ok}));
}

QTEST_MAIN(TstListaSelecionada)
#include "tst_lista_selecionada.moc"
