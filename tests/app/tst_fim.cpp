#include "app/inicio.h"
#include "app/programa.h"

#include "apoio.h"
#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "platform/aplicacao.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "platform/fim.h"
#include "shell/estado.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "startup/estado.h"
#include "support/sistema.h"
#include "support/suporte.h"

#include <QDir>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The whole program and a real lesson program: that they reach one another, to the last answer.
class TstFim : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void theEndKeepsTheAnswers();
    void aShellThatCantBeReachedSaysSo();

private:
    QList<Caixa> mCaixas; ///< shown
    std::unique_ptr<Programa> mPrograma;
};

static QString windows(const QString &resto)
{
    return qEnvironmentVariable("QUOREL_WINDIR") + resto;
}

void TstFim::init()
{
    failOnWarnings();
    QDir(windows({})).removeRecursively();
    escreve(windows(u"/QUOREL2001/DBBLOCOS/F1/0226MAF1.edb"_s),
        "<TM>Minha escola</TM>\r\n[ROT<1>]\r\nNomeRot =Contar\r\nCODROT:12\r\n"
        "[<1>1]\r\nNome =Um\r\nLinha =(1,1)7\r\n\tTipo = Zeto\t\r\n");
    makeRegister(windows(u"/Cadastros.mdb"_s));
    mCaixas.clear();
    costuras().box = [this](const Caixa &caixa) {
        mCaixas << caixa;
        return Resposta::Ok;
    };
    costuras().endProcess = [](int code) { throw FimDoPrograma{code}; };
    mPrograma = std::make_unique<Programa>();
}

void TstFim::cleanup()
{
    mPrograma.reset();
    reiniciaShell();
    reiniciaLessons();
    reiniciaCatalogue();
    reiniciaData();
    reiniciaStartup();
    reiniciaFim();
    reiniciaCosturas();
}

/// The player is in a lesson without an answer, and answers of the lessons before stand with the shell: they become a
/// row, though the player acknowledges the end first and answers afterwards.
void TstFim::theEndKeepsTheAnswers()
{
    const QString programa = windows(u"/QUOREL2001/exe/Zeto.exe"_s);
    QDir().mkpath(windows(u"/QUOREL2001/exe"_s));
    QVERIFY(QFile::copy(QStringLiteral(QUOREL_BIN "/licao" QUOREL_SUFFIX), programa));
    iniciaPrograma(u"/NIVEL:F1"_s, mPrograma->janelas());
    QTest::mouseClick(&mPrograma->janelas().principal().bloco(9), Qt::LeftButton);
    QTest::mouseClick(&mPrograma->janelas().blocos().botao(1), Qt::LeftButton);
    QVERIFY(gJanelaZeto != 0);
    gRespostas = u"A:"_s;
    QVERIFY_EXCEPTION_THROWN(mPrograma->janelas().principal().close(), FimDoPrograma);
    QCOMPARE(plainSql(windows(u"/Cadastros.mdb"_s), u"SELECT LG_Aluno, RO_Cod, LG_Resp FROM LG_LogAulas"_s),
        QStringList{u"9999|12|Matemática<disc>Contar<rot>A:"_s});
    QTRY_COMPARE_WITH_TIMEOUT(findWindow(u"Zeto - Quorel", false), Janela(0), 30000);
}

void TstFim::aShellThatCantBeReachedSaysSo()
{
    const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
    const ScratchDir other;
    other.put(u"/quorel"_s); // a file in the directory's place
    qputenv("XDG_RUNTIME_DIR", other.native().toUtf8());
    iniciaPrograma(u"/NIVEL:F1"_s, mPrograma->janelas());
    QCOMPARE(mCaixas.size(), kMeetInADirectory ? 1 : 0);
    if (kMeetInADirectory)
        QVERIFY(mCaixas[0].texto.contains(other.native(u"/quorel"_s)));
    QVERIFY(mPrograma->janelas().principal().isVisible());
    qputenv("XDG_RUNTIME_DIR", before);
}

int main(int argc, char **argv)
{
    Aplicacao app(argc, argv);
    TstFim test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_fim.moc"
