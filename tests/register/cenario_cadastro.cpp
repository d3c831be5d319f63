#include "cenario_cadastro.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "platform/costuras.h"
#include "platform/fim.h"
#include "platform/janela.h"
#include "platform/protocolo.h"

#include <QAbstractItemView>
#include <QRegularExpression>

namespace quorel::teste {

using namespace Qt::StringLiterals;

QString linhasDeSempre()
{
    return u"INSERT INTO CL_Classes (CL_Cod, CL_Nome, CL_Prof, CL_Senha) VALUES (1, 'Turma A', 'Ana Lima', 'amora'), "
           "(2, 'Turma B', 'Beto Reis', 'Caju'), (3, 'Turma C', 'Ana Lima', '');"
           "INSERT INTO AL_Alunos (AL_Cod, AL_Nome) VALUES (1, 'Ari'), (2, 'Bia'), (3, 'Caio'), (4, 'Dora');"
           "INSERT INTO CLxAL (AL_Cod, CL_Cod, CLxAL_DataIngr) VALUES (1, 1, '2020-02-03 08:00:00'), "
           "(2, 1, '2020-02-03 08:00:00'), (3, 1, '2020-02-03 08:00:00'), (4, 2, '2020-02-03 08:00:00')"_s;
}

CenarioCadastro::CenarioCadastro(const QString &linhas)
{
    failOnWarnings();
    reiniciaStartup();
    reiniciaLessons();
    reiniciaRegister();
    reiniciaFim();
    if (!linhas.isEmpty())
        sql(linhas);
    mRegistro.open();
    CriaGenericos();
    AbreTabelasCadastro();
    gNomeNivel = u"Fundamental I"_s;
    gEscolas = true;
    gAluno = kGenerico;
    gClasse = kGenerico;
    InstalaGancho(janelaBlocos());
    mAlunos = std::make_unique<fAlunos>(mAtiva,
        Arredores{.lugarDoPainel =
                      [] {
                          return Lugar{1500, 900, 3270, 8160};
                      },
            .mostraPainel = [this] { ++paineis; },
            .setTituloPrincipal = [this](const QString &titulo) { titulos << titulo; },
            .mostraDesempenho = [this] { ++desempenhos; }});
    alunos().mostra();
}

CenarioCadastro::~CenarioCadastro()
{
    mAlunos.reset();
    reiniciaLessons();
    reiniciaData();
    reiniciaCosturas();
}

Login &CenarioCadastro::login()
{
    return alunos().login();
}

template <typename T>
static T &inEither(CenarioCadastro &cenario, const QString &nome)
{
    T *found = cenario.login().findChild<T *>(nome);
    return found ? *found : child<T>(cenario.alunos(), nome);
}

QPushButton &CenarioCadastro::botao(const QString &nome)
{
    return inEither<QPushButton>(*this, nome);
}

QLineEdit &CenarioCadastro::campo(const QString &nome)
{
    return inEither<QLineEdit>(*this, nome);
}

QComboBox &CenarioCadastro::combo(const QString &nome)
{
    return child<QComboBox>(alunos(), nome);
}

bool CenarioCadastro::aberto(const QString &quadro)
{
    return child<QWidget>(alunos(), quadro).isVisible();
}

void CenarioCadastro::aperta(const QString &nome)
{
    QPushButton &alvo = botao(nome);
    QVERIFY2(alvo.isVisible() && alvo.isEnabled(), qPrintable(nome));
    QTest::mouseClick(&alvo, Qt::LeftButton);
}

void CenarioCadastro::digita(const QString &nome, const QString &texto)
{
    QLineEdit &alvo = campo(nome);
    alvo.selectAll();
    QTest::keyClick(&alvo, Qt::Key_Delete);
    tecla(alvo, texto);
}

void CenarioCadastro::escolhe(const QString &nome, const QString &texto)
{
    QComboBox &alvo = combo(nome);
    const int linha = alvo.findText(texto);
    QVERIFY2(linha >= 0, qPrintable(texto));
    alvo.showPopup();
    alvo.view()->setCurrentIndex(alvo.model()->index(linha, 0));
    QTest::keyClick(alvo.view(), Qt::Key_Return);
    QCOMPARE(alvo.currentText(), texto);
}

void CenarioCadastro::escreve(const QString &nome, const QString &texto)
{
    QLineEdit &alvo = *combo(nome).lineEdit();
    alvo.selectAll();
    QTest::keyClick(&alvo, Qt::Key_Delete);
    tecla(alvo, texto);
    QTest::mouseClick(&alvo, Qt::LeftButton);
}

void CenarioCadastro::abreCadastro(qint32 classe)
{
    gClasse = classe;
    gSenhaOK = true;
    aperta(u"CmdAluno(3)"_s);
}

QString CenarioCadastro::mostra(const QString &nome)
{
    if (nome == u"aluno"_s)
        return campo(u"TxtAluno"_s).text() + u", "_s + campo(u"TxtAulaInf"_s).text();
    if (nome == u"classe"_s)
        return campo(u"TxtNomeClasse"_s).text() + u", "_s + campo(u"TxtProfResult"_s).text();
    if (nome == u"gravados"_s)
        return sql(u"SELECT count(*) FROM AL_Alunos UNION ALL SELECT count(*) FROM CL_Classes"_s).join(u' ');
    if (nome == u"corrente"_s)
        return QString::number(gClasse);
    if (nome == u"foco"_s)
        return alunos().focusWidget()->objectName();
    if (nome.startsWith(u"Cmb"_s))
        return combo(nome).isEnabled() ? combo(nome).currentText() : u"fechada"_s;
    if (nome.startsWith(u"Txt"_s))
        return campo(nome).displayText();
    const QPushButton &alvo = botao(nome);
    return alvo.isVisible() && alvo.isEnabled() ? u"sim"_s : u"não"_s;
}

void CenarioCadastro::faz(const QString &passos)
{
    static const QRegularExpression forma(u"^([^=~?:]+)([=~?:]?)(.*)$"_s);
    for (const QString &passo : passos.split(u"; "_s, Qt::SkipEmptyParts)) {
        if (!alunos().isVisible())
            alunos().mostra();
        gSenhaOK = true;
        const auto partes = forma.match(passo);
        const QString nome = partes.captured(1);
        const QString acao = partes.captured(2);
        const QString texto = partes.captured(3);
        if (acao == u"?"_s)
            QVERIFY2(mostra(nome) == texto, qPrintable(passo + u" is "_s + mostra(nome)));
        else if (acao == u":"_s)
            teclaEm(child<QWidget>(alunos(), nome), QKeySequence(texto)[0].key());
        else if (acao.isEmpty())
            aperta(nome);
        else if (nome.startsWith(u"Txt"_s))
            digita(nome, texto);
        else if (texto.isEmpty() || acao == u"~"_s)
            escreve(nome, texto);
        else
            escolhe(nome, texto);
    }
}

void CenarioCadastro::confirmaCaixas()
{
    costuras().box = [this](const Caixa &caixa) {
        caixas.push_back(caixa.titulo.contains(u" - "_s) ? relato(caixa.titulo) : caixa);
        return caixa.botoes == Botoes::SimNao ? Resposta::Sim : Resposta::Ok;
    };
}

void tecla(QWidget &alvo, const QString &texto)
{
    for (const QChar letra : texto)
        QTest::sendKeyEvent(QTest::Click, &alvo, Qt::Key_unknown, QString(letra), Qt::NoModifier);
}

void teclaEm(QWidget &controle, Qt::Key key)
{
    controle.window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(controle.window()));
    controle.setFocus();
    QVERIFY(controle.hasFocus());
    QTest::keyClick(&controle, key);
}

QStringList itens(const QComboBox &combo)
{
    QStringList textos;
    for (int i = 0; i < combo.count(); ++i)
        textos << combo.itemText(i);
    return textos;
}

static QString linhas(const CenarioCadastro &c, const QString &consulta)
{
    return c.sql(consulta).join(u", "_s);
}

QString alunos(const CenarioCadastro &c)
{
    return linhas(c, u"SELECT AL_Cod, AL_Nome FROM AL_Alunos WHERE AL_Cod <> 9999 ORDER BY AL_Cod"_s);
}

QString ligacoes(const CenarioCadastro &c)
{
    return linhas(c,
        u"SELECT AL_Cod, CL_Cod || CASE CLxAL_DataIngr WHEN '%1' THEN '*' ELSE '' END FROM CLxAL "
        "WHERE AL_Cod <> 9999 ORDER BY CLxAL_Id"_s.arg(QStringView(kAgora)));
}

QString classes(const CenarioCadastro &c)
{
    return linhas(c, u"SELECT CL_Cod, CL_Nome, CL_Prof, CL_Senha FROM CL_Classes ORDER BY CL_Cod"_s);
}

QString aulas(const CenarioCadastro &c)
{
    return linhas(c, u"SELECT LG_Aluno, LG_Classe, RO_Cod, LG_Resp FROM LG_LogAulas"_s);
}

void contaDaLinha()
{
    QFETCH(Historia, historia);
    conta(historia);
}

void conta(const Historia &historia)
{
    CenarioCadastro c(linhasDeSempre() + u';' + historia.antes);
    costuras().now = [] { return QDateTime::fromString(QString::fromUtf16(kAgora), Qt::ISODate); };
    c.confirmaCaixas();
    c.abreCadastro(historia.classe);
    c.faz(historia.passos);
    QCOMPARE(c.caixas, historia.caixas);
    QCOMPARE(alunos(c), historia.alunos);
    QCOMPARE(ligacoes(c), historia.ligacoes);
    QCOMPARE(classes(c), historia.classes);
    QCOMPARE(gMensagem.Codigo, 0);
}

void reporta(const QString &resposta)
{
    gCodRoteiro = 12;
    gNomeRoteiro = u"Contar"_s;
    EnviaTexto(findWindow(QString::fromUtf16(kTituloGerenciador), true), janelaBlocos(), MSG_RESPOSTA, resposta);
}

} // namespace quorel::teste
