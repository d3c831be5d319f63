#include "shell/comandos.h"

#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/eventos.h"
#include "shell/fatencao.h"
#include "shell/fprincip.h"
#include "shell/janelas.h"
#include "startup/estado.h"
#include "startup/lugares.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"

#include <QApplication>
#include <QFileDialog>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr int kJanelaNormal = 1;

static QString config(const QString &chave)
{
    return gConfig.Config(chave);
}

static QString dirQuorel()
{
    return gSistema.DirWindows() + u"\\QUOREL2001"_s;
}

static void abre(const QString &documento, const QString &diretorio, ShowMode modo)
{
    openDocument({handleOf(QApplication::activeWindow()), u"OPEN"_s, documento, diretorio, modo});
}

// A file in the blocks' directory of the configuration, else in that of the Windows directory; empty when in neither.
static QString emBlocos(const QString &resto)
{
    const QString dir = config(u"DBBLOCOS"_s);
    if (!dir.isEmpty() && gTexto.ArquivoExiste(dir + resto))
        return dir + resto;
    const QString local = dirQuorel() + u"\\DBBLOCOS"_s + resto;
    return gTexto.ArquivoExiste(local) ? local : QString();
}

void abreAjuda()
{
    const QString documento = emBlocos(u"\\help.doc"_s);
    if (!documento.isEmpty())
        abre(documento, u"help.doc"_s, ShowMode::Normal); // Kept: a file's name as directory; viewers start without it
}

void abreJogo(const QString &nome)
{
    const QString documento = emBlocos(u"\\Jogos\\"_s + nome);
    if (!documento.isEmpty())
        abre(documento, nome, ShowMode::Minimized);
}

void abreDesenho()
{
    const QString dir = config(u"DIRQUOREL"_s);
    const QString local = dirQuorel();
    QString comando;
    // Kept: the check names desenhos.exe, the command desenho.exe, installed side by side; no blank before /user:.
    if (!dir.isEmpty() && gTexto.ArquivoExiste(dir + u"\\exe\\desenhos.exe"_s))
        comando = dir + u"\\exe\\desenho.exe /cfg:"_s + gArquivoCfg + u"/user:"_s;
    // Kept: no backslash before zeto_cnf.txt, a name that the drawing tool expects so.
    else if (gTexto.ArquivoExiste(local + u"\\exe\\desenhos.exe"_s))
        comando = local + u"\\exe\\desenhos.exe /cfg:"_s + local + u"zeto_cnf.txt /user:"_s;
    if (!comando.isEmpty())
        gTexto.Executa(comando, kJanelaNormal, false, QString());
}

// A file that the user points out; its name and its directory. Both are empty when the dialogue is cancelled.
static std::pair<QString, QString> escolhePagina()
{
    const QString inicio = nativePath(config(u"DBBLOCOS"_s) + u"\\MatDid\\"_s);
    const QString escolhido = backslashPath(QFileDialog::getOpenFileName(
        QApplication::activeWindow(), u"Execução de Blocos do Sistema Quorel"_s, inicio, u"HTML's (*.html *.htm)"_s));
    return {escolhido.mid(escolhido.lastIndexOf(u'\\') + 1), gTexto.DiretorioDe(escolhido)};
}

void abreMaterialDidatico()
{
    const QString pagina = emBlocos(u"\\MatDid\\index.htm"_s);
    if (!pagina.isEmpty()) {
        abre(u"index.htm"_s, gTexto.DiretorioDe(pagina), ShowMode::Normal);
        return;
    }
    caixa({u"Arquivo não encontrado\nFaça o download do material didático em\n"_s + makerAddress() + u" e instale-o."_s,
        u"Material Didático"_s, Icone::Informacao});
    const auto [nome, diretorio] = escolhePagina();
    abre(nome, diretorio, ShowMode::Normal);
}

void chamaQuorel(Janelas &janelas)
{
    eventTurn();
    gTexto.Executa(dirQuorel() + u"\\exe\\Quorel2001.exe /BLOCO:"_s + gNivel, kJanelaNormal, false, QString());
    janelas.principal().descarrega();
}

void acessaPagina(Janelas &janelas, bool conectado)
{
    if (!conectado) {
        fAtencao aviso(QApplication::activeWindow());
        aviso.exec();
        const Caixa pergunta{u"Deseja Continuar mesmo assim?"_s, u"Conexão por rede DIAL-UP não encontrada"_s,
            Icone::Informacao, Botoes::SimNao};
        if (caixa(pergunta) != Resposta::Sim) {
            janelas.principal().raise();
            janelas.principal().activateWindow();
            return;
        }
    }
    openDocument({handleOf(QApplication::activeWindow()), u"OPEN"_s, makerAddress(), QString(), ShowMode::Maximized});
}

} // namespace quorel
