#include "cenario_cadastro.h"

#include "data/bd.h"
#include "lessons/andamento.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The register of classes and teachers; what each story leaves is read back with plain SQL.
class TstFrmClasses : public QObject
{
    Q_OBJECT
private slots:
    void opensAndClosesByItsButton();
    void browsesTheClasses_data();
    void browsesTheClasses();
    void newClassBecomesTheCurrentOne();
    void secondSaveOfANewEmptyClassWritesOverTheFirst();
    void classSavedTwiceInARowStays();
    void teacherOfTwoClassesLandsOnTheFirst();
    void apostropheInTheTeachersNameIsReported();
    void emptyNameIsTold();
    void passwordHasEightCharacters();
    void cancelDropsTheNewClass();
    void deleting_data();
    void deleting();
    void deletingByANameThatNobodyHas();
    void deletingByANameWithAnApostrophe();
    void deletingOverTheSelectionSeesNoPupils();
    void savedOverTheSelectionEndsTheProgram();
};

static const QString kA = u"1|Turma A|Ana Lima|amora"_s;
static const QString kB = u"2|Turma B|Beto Reis|Caju"_s;
static const QString kC = u"3|Turma C|Ana Lima|"_s;
static const QString kGenericaSql = u"9999|Genérica|Genérica|Chavema"_s;

static QString mostrada(CenarioCadastro &c)
{
    return c.campo(u"TxtNomeClasse"_s).text() + u", "_s + c.campo(u"TxtProfResult"_s).text();
}

static void abreClasses(CenarioCadastro &c, qint32 classe, int adiante)
{
    c.abreCadastro(classe);
    c.aperta(u"cmdCadClasses"_s);
    for (int i = 0; i < adiante; ++i)
        c.aperta(u"CmdProfProx"_s);
}

static void digitaClasse(CenarioCadastro &c, const QString &nome, const QString &professor, const QString &senha)
{
    c.digita(u"TxtNomeClasse"_s, nome);
    c.digita(u"TxtNomeProf"_s, professor);
    c.digita(u"TxtProfSenh"_s, senha);
}

void TstFrmClasses::opensAndClosesByItsButton()
{
    CenarioCadastro c;
    abreClasses(c, 1, 2);
    QVERIFY(c.aberto(u"frmClasses"_s));
    QCOMPARE(c.campo(u"TxtNomeProf"_s).text(), u"Beto Reis"_s);
    QCOMPARE(c.campo(u"TxtProfSenh"_s).displayText(), u"Caju"_s); // in clear
    c.aperta(u"cmdCadClasses"_s);
    QVERIFY(!c.aberto(u"frmClasses"_s));
    c.aperta(u"cmdCadClasses"_s);
    QCOMPARE(mostrada(c), u"Genérica, 1 / 4"_s);
}

void TstFrmClasses::browsesTheClasses_data()
{
    QTest::addColumn<QStringList>("botoes");
    QTest::addColumn<QString>("classe");
    QTest::newRow("next") << QStringList{u"CmdProfProx"_s} << u"Turma A, 2 / 4"_s;
    QTest::newRow("last") << QStringList{u"CmdProfUlt"_s} << u"Turma C, 4 / 4"_s;
    QTest::newRow("next on the last stays") << QStringList{u"CmdProfUlt"_s, u"CmdProfProx"_s} << u"Turma C, 4 / 4"_s;
    QTest::newRow("previous") << QStringList{u"CmdProfUlt"_s, u"CmdProfAnt"_s} << u"Turma B, 3 / 4"_s;
    QTest::newRow("previous on the first stays") << QStringList{u"CmdProfAnt"_s} << u"Genérica, 1 / 4"_s;
    QTest::newRow("first") << QStringList{u"CmdProfUlt"_s, u"CmdProfPrim"_s} << u"Genérica, 1 / 4"_s;
}

void TstFrmClasses::browsesTheClasses()
{
    QFETCH(QStringList, botoes);
    QFETCH(QString, classe);
    CenarioCadastro c;
    abreClasses(c, 1, 0);
    for (const QString &botao : botoes)
        c.aperta(botao);
    QCOMPARE(mostrada(c), classe);
}

void TstFrmClasses::newClassBecomesTheCurrentOne()
{
    CenarioCadastro c;
    abreClasses(c, 1, 0);
    c.aperta(u"CmdProfNovo"_s);
    QCOMPARE(mostrada(c), u", Novo"_s);
    QCOMPARE(c.alunos().focusWidget(), &c.campo(u"TxtNomeClasse"_s));
    QVERIFY(c.botao(u"CmdProfCancela"_s).isVisible() && !c.botao(u"CmdProfExcluir"_s).isEnabled());
    digitaClasse(c, u"Turma D"_s, u"Davi Sá"_s, u"Uva"_s);
    c.aperta(u"CmdProfSalvar"_s);
    QVERIFY(!c.botao(u"CmdProfCancela"_s).isVisible() && c.botao(u"CmdProfExcluir"_s).isEnabled());
    QCOMPARE(classes(c), (QStringList{kA, kB, kC, kGenericaSql, u"10000|Turma D|Davi Sá|Uva"_s}));
    QCOMPARE(gClasse, 10000);
    QCOMPARE(mostrada(c), u"Turma D, 5 / 5"_s);
    QCOMPARE(c.campo(u"TxtAulaInf"_s).text(), u"0 / 0"_s); // the new class's pupils
    QVERIFY(itens(c.combo(u"CmbAluClasses"_s)).contains(u"Turma D"_s));
    QCOMPARE(gMensagem.Codigo, 0); // nothing is told to the shell
}

void TstFrmClasses::secondSaveOfANewEmptyClassWritesOverTheFirst()
{
    CenarioCadastro c;
    abreClasses(c, 1, 0);
    c.aperta(u"CmdProfNovo"_s);
    digitaClasse(c, u"Turma D"_s, u"Davi Sá"_s, u"Uva"_s);
    c.aperta(u"CmdProfSalvar"_s);
    c.aperta(u"CmdProfSalvar"_s);
    QCOMPARE(classes(c), (QStringList{kA, kB, kC, u"9999|Turma D|Davi Sá|Uva"_s, u"10000|Turma D|Davi Sá|Uva"_s}));
}

void TstFrmClasses::classSavedTwiceInARowStays()
{
    CenarioCadastro c;
    abreClasses(c, 1, 2);
    c.digita(u"TxtProfSenh"_s, u"manga"_s);
    c.aperta(u"CmdProfSalvar"_s);
    c.aperta(u"CmdProfSalvar"_s);
    QCOMPARE(classes(c), (QStringList{kA, u"2|Turma B|Beto Reis|manga"_s, kC, kGenericaSql}));
    QCOMPARE(gClasse, 2);
    QCOMPARE(c.campo(u"TxtAluno"_s).text(), u"Dora"_s);
}

void TstFrmClasses::teacherOfTwoClassesLandsOnTheFirst()
{
    CenarioCadastro c;
    abreClasses(c, 2, 3);
    QCOMPARE(mostrada(c), u"Turma C, 4 / 4"_s);
    c.digita(u"TxtProfSenh"_s, u"kiwi"_s);
    c.aperta(u"CmdProfSalvar"_s);
    QCOMPARE(classes(c), (QStringList{kA, kB, u"3|Turma C|Ana Lima|kiwi"_s, kGenericaSql}));
    QCOMPARE(mostrada(c), u"Turma A, 2 / 4"_s);
    QCOMPARE(gClasse, 1);
    QCOMPARE(c.campo(u"TxtAulaInf"_s).text(), u"1 / 3"_s);
}

void TstFrmClasses::apostropheInTheTeachersNameIsReported()
{
    CenarioCadastro c;
    abreClasses(c, 1, 2);
    c.digita(u"TxtNomeProf"_s, u"Beto d'Ávila"_s);
    BoxScript boxes{Resposta::Ok};
    c.aperta(u"CmdProfSalvar"_s);
    QCOMPARE(boxes.last().titulo, u"RsClasses - Pesquisa"_s);
    QCOMPARE(classes(c), (QStringList{kA, u"2|Turma B|Beto d'Ávila|Caju"_s, kC, kGenericaSql})); // saved as typed
    QCOMPARE(mostrada(c), u"Genérica, 1 / 4"_s);
    QCOMPARE(gClasse, 9999);
}

void TstFrmClasses::emptyNameIsTold()
{
    CenarioCadastro c;
    abreClasses(c, 1, 0);
    c.aperta(u"CmdProfNovo"_s);
    c.digita(u"TxtNomeProf"_s, u"Davi Sá"_s);
    BoxScript boxes{Resposta::Ok};
    c.aperta(u"CmdProfSalvar"_s);
    QCOMPARE(
        boxes.last(), (Caixa{u"Digite o nome da classe!"_s, u"Cadastro de Classes"_s, Icone::Informacao, Botoes::Ok}));
    QCOMPARE(classes(c).size(), 4);
    QVERIFY(c.botao(u"CmdProfCancela"_s).isVisible());
    c.digita(u"TxtNomeClasse"_s, u"Turma D"_s); // the record is pending as before
    c.aperta(u"CmdProfSalvar"_s);
    QCOMPARE(classes(c).last(), u"10000|Turma D|Davi Sá|"_s);
}

void TstFrmClasses::passwordHasEightCharacters()
{
    CenarioCadastro c;
    abreClasses(c, 1, 2);
    c.digita(u"TxtProfSenh"_s, u"jabuticaba"_s);
    c.aperta(u"CmdProfSalvar"_s);
    QCOMPARE(classes(c).at(1), u"2|Turma B|Beto Reis|jabutica"_s);
}

void TstFrmClasses::cancelDropsTheNewClass()
{
    CenarioCadastro c;
    abreClasses(c, 1, 2);
    c.aperta(u"CmdProfNovo"_s);
    c.digita(u"TxtNomeClasse"_s, u"Turma D"_s);
    c.aperta(u"CmdProfCancela"_s);
    QCOMPARE(mostrada(c), u"Turma B, 3 / 4"_s);
    QVERIFY(!c.botao(u"CmdProfCancela"_s).isVisible() && c.botao(u"CmdProfExcluir"_s).isEnabled());
    QCOMPARE(classes(c).size(), 4);
}

void TstFrmClasses::deleting_data()
{
    QTest::addColumn<int>("corrente"); // class of the filter
    QTest::addColumn<int>("adiante"); // class on display
    QTest::addColumn<QString>("texto");
    QTest::addColumn<Resposta>("resposta");
    QTest::addColumn<QStringList>("restam");
    const QString comAlunos = u"Exclua primeiro os alunos relacionados a esse professor."_s;
    const auto pergunta = [](const QString &nome) { return u"Deseja Apagar o Professor(a) %1 ?"_s.arg(nome); };
    QTest::newRow("pupils in the filter hold the class")
        << 2 << 2 << comAlunos << Resposta::Ok << QStringList{kA, kB, kC, kGenericaSql};
    QTest::newRow("pupils hidden by the filter don't")
        << 1 << 2 << pergunta(u"Beto Reis"_s) << Resposta::Ok << QStringList{kA, kC, kGenericaSql};
    QTest::newRow("cancel") << 1 << 2 << pergunta(u"Beto Reis"_s) << Resposta::Cancela
                            << QStringList{kA, kB, kC, kGenericaSql};
    QTest::newRow("the teacher's first class goes, another on display")
        << 2 << 3 << pergunta(u"Ana Lima"_s) << Resposta::Ok << QStringList{kB, kC, kGenericaSql};
    QTest::newRow("the pupils of the teacher's first class hold the second")
        << 1 << 3 << comAlunos << Resposta::Ok << QStringList{kA, kB, kC, kGenericaSql};
    QTest::newRow("the generic class can go")
        << 1 << 0 << pergunta(u"Genérica"_s) << Resposta::Ok << QStringList{kA, kB, kC};
}

void TstFrmClasses::deleting()
{
    QFETCH(int, corrente);
    QFETCH(int, adiante);
    QFETCH(QString, texto);
    QFETCH(Resposta, resposta);
    QFETCH(QStringList, restam);
    CenarioCadastro c;
    abreClasses(c, corrente, adiante);
    BoxScript boxes{resposta};
    c.aperta(u"CmdProfExcluir"_s);
    const bool pergunta = texto.startsWith(u"Deseja");
    QCOMPARE(boxes.last(),
        (Caixa{.texto = texto,
            .icone = pergunta ? Icone::Nenhum : Icone::Informacao,
            .botoes = pergunta ? Botoes::OkCancela : Botoes::Ok}));
    QCOMPARE(classes(c), restam);
    QCOMPARE(c.sql(u"SELECT count(*) FROM CLxAL"_s), QStringList{u"5"_s}); // links stay, also those to no class
}

/// Every box is answered with OK; of questions the text is kept, of reports the title.
static void confirma(QStringList &textos)
{
    costuras().box = [&textos](const Caixa &caixa) {
        textos << (caixa.botoes == Botoes::OkCancela ? caixa.texto : caixa.titulo);
        return Resposta::Ok;
    };
}

void TstFrmClasses::deletingByANameThatNobodyHas()
{
    CenarioCadastro c;
    abreClasses(c, 1, 2);
    c.digita(u"TxtNomeProf"_s, u"Beto"_s);
    QStringList textos;
    confirma(textos);
    c.aperta(u"CmdProfExcluir"_s);
    QCOMPARE(textos, (QStringList{u"Deseja Apagar o Professor(a) Beto ?"_s, u"RsClasses - RegistroApaga"_s}));
    QCOMPARE(classes(c), (QStringList{kA, kB, kC, kGenericaSql}));
    QCOMPARE(mostrada(c), u"Genérica, 1 / 4"_s);
}

// The name is no criterion: the failed search leaves the first class current, and that one goes.
void TstFrmClasses::deletingByANameWithAnApostrophe()
{
    CenarioCadastro c(linhasDeSempre() + u"; UPDATE CL_Classes SET CL_Prof='Beto d''Ávila' WHERE CL_Cod=2"_s);
    abreClasses(c, 1, 2);
    QStringList textos;
    confirma(textos);
    c.aperta(u"CmdProfExcluir"_s);
    QCOMPARE(textos, (QStringList{u"RsClasses - Pesquisa"_s, u"Deseja Apagar o Professor(a) Beto d'Ávila ?"_s}));
    QCOMPARE(classes(c), (QStringList{kA, u"2|Turma B|Beto d'Ávila|Caju"_s, kC}));
}

// The selection's rows have no class: the search for pupils fails, is told, and holds nothing back.
void TstFrmClasses::deletingOverTheSelectionSeesNoPupils()
{
    CenarioCadastro c;
    abreClasses(c, 2, 2);
    c.aperta(u"CmdAluno(2)"_s);
    QStringList textos;
    confirma(textos);
    c.aperta(u"CmdProfExcluir"_s);
    QCOMPARE(textos, (QStringList{u"RSCLXAL - Pesquisa"_s, u"Deseja Apagar o Professor(a) Beto Reis ?"_s}));
    QCOMPARE(classes(c), (QStringList{kA, kC, kGenericaSql}));
}

// The frame stays over the selection's, whose rows have no class: the row is saved, and the filter then fails.
void TstFrmClasses::savedOverTheSelectionEndsTheProgram()
{
    CenarioCadastro c;
    abreClasses(c, 1, 2);
    c.aperta(u"CmdAluno(2)"_s);
    QVERIFY(c.aberto(u"FrmSel"_s) && c.aberto(u"frmClasses"_s));
    QCOMPARE(c.campo(u"TxtNomeClasse"_s).text(), u"Turma B"_s);
    gBD->MoveParaComecoDeArquivo(u"rsClasses"_s);
    c.aperta(u"CmdProfUlt"_s);
    c.digita(u"TxtProfSenh"_s, u"pera"_s);
    QVERIFY_EXCEPTION_THROWN(c.botao(u"CmdProfSalvar"_s).click(), ErroExecucao);
    QCOMPARE(classes(c), (QStringList{kA, kB, u"3|Turma C|Ana Lima|pera"_s, kGenericaSql}));
}

QTEST_MAIN(TstFrmClasses)
#include "tst_frmclasses.moc"
