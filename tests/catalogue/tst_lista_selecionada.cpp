#include "catalogue/lista_selecionada.h"

#include "catalogue/estado.h"
#include "platform/caminho.h"
#include "platform/sistema.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"

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
    escreve(configurado(), "7\r\n");
    escreve(local(), "2\r\n");
    gRotSelec = u"7\r\n"_s;
    gConfig.SetaCFG(u"[zeto]\r\nDIRQUOREL="_s + barras(mDir->filePath(u"dir"_s)));
}

void TstListaSelecionada::whereItIsRead_data()
{
    rows<bool, bool, bool, QString>({
        // whether there are the key, the file that it names, the other file
        {"the configured one", true, true, true, "7\r\n"},
        {"it does not exist: the other", true, false, true, "2\r\n"},
        {"no key: the other", false, true, true, "2\r\n"},
        {"kept: neither, the list stays", true, false, false, "antiga"},
    });
}

void TstListaSelecionada::whereItIsRead()
{
    const auto [key, first, second, expected] = row<bool, bool, bool, QString>();
    if (!key)
        gConfig.SetaCFG(u"[zeto]"_s);
    if (!first)
        QFile::remove(configurado());
    if (!second)
        QFile::remove(local());
    gRotSelec = u"antiga"_s;
    leListaSelecionada();
    QCOMPARE(gRotSelec, expected);
}

void TstListaSelecionada::endOfSelection_data()
{
    rows<QList<int>, bool, QByteArray>({
        {"a new list, yes", {12610, 5, 5}, true, "12610\r\n5\r\n5\r\n"},
        {"a new list, no: the former one is back", {5}, false, "7\r\n"},
        {"no click, yes: an empty file, not deleted", {}, true, ""},
        {"no click, no", {}, false, "7\r\n"},
    });
}

void TstListaSelecionada::endOfSelection()
{
    const auto [clicks, yes, after] = row<QList<int>, bool, QByteArray>();
    iniciaSelecao();
    QVERIFY(gSelecionando);
    QCOMPARE(gRotSelec, QString());
    for (const int cod : clicks) {
        BoxScript boxes{Resposta::Ok};
        incluiRoteiro(cod);
        QCOMPARE(boxes.last(), (Caixa{u"Roteiro Incluído"_s, u"Selecionador de Roteiros"_s, Icone::Informacao}));
    }
    QCOMPARE(le(configurado()), QByteArray("7\r\n"));
    BoxScript boxes{yes ? Resposta::Sim : Resposta::Nao};
    terminaSelecao();
    const Caixa erases{u"Confirma a exclusão da lista dos Roteiros Selecionado"_s, u"Exclusão da Lista"_s,
        Icone::Informacao, Botoes::SimNao};
    const Caixa replaces{u"Confirma a substituição da lista dos Roteiros Selecionado"_s, u"Substituição da Lista"_s,
        Icone::Informacao, Botoes::SimNao};
    QCOMPARE(boxes.last(), clicks.isEmpty() ? erases : replaces);
    QVERIFY(QFile::exists(configurado()));
    QCOMPARE(le(configurado()), after);
    QCOMPARE(gRotSelec, QString::fromLatin1(after));
    QVERIFY(!gSelecionando);
}

void TstListaSelecionada::writesWhereTheKeySaysOnly()
{
    QDir(mDir->filePath(u"dir"_s)).removeRecursively();
    QFile::remove(local());
    gRotSelec = u"9\r\n"_s;
    gSelecionando = true;
    BoxScript boxes{Resposta::Sim, Resposta::Sim}; // the directory is gone: the write fails, nobody is told
    terminaSelecao();
    QVERIFY(!QFile::exists(local()));
    QCOMPARE(gRotSelec, u"9\r\n"_s);
    gConfig.SetaCFG(u"[zeto]"_s);
    terminaSelecao();
    QCOMPARE(le(local()), QByteArray("9\r\n"));
}

void TstListaSelecionada::mayRun_data()
{
    rows<QString, bool>({
        {"no list", "", true},
        {"listed", "5\r\n261\r\n", true},
        {"kept: part of a longer code", "12610\r\n", true},
        {"LF alone, with blanks", "5 \n 261 \n", true},
        {"not listed", "26\r\n1\r\n", false},
        {"a blank line is a list in force", "\r\n", false},
    });
}

void TstListaSelecionada::mayRun()
{
    const auto [lista, may] = row<QString, bool>();
    gRotSelec = lista;
    if (may) {
        const BoxScript none;
        QVERIFY(autorizaRoteiro(261));
        return;
    }
    BoxScript boxes{Resposta::Ok};
    QVERIFY(!autorizaRoteiro(261));
    QCOMPARE(boxes.last(), (Caixa{u"Roteiro não autorizado"_s, u"Selecionador de Roteiros"_s, Icone::Informacao}));
}

QTEST_MAIN(TstListaSelecionada)
#include "tst_lista_selecionada.moc"
