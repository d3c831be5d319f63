#include "autoria/mediaplace.h"
#include "oficina/instalador.h"
#include "oficina/janelaoficina.h"
#include "platform/aplicacao.h"
#include "platform/costuras.h"
#include "visual/aparencia.h"

#include <QFileDialog>

using namespace quorel;
using namespace Qt::StringLiterals;

static int tell(const QString &texto)
{
    caixa({.texto = texto, .titulo = u"Oficina de lições"_s, .icone = Icone::Critico});
    constexpr int kNaoExecutou = 2;
    return kNaoExecutou;
}

static int install(const QString &pacote)
{
    Instalador window(pacote);
    window.exec();
    return 0;
}

static int write(const QString &caminho, int roteiro, bool comMidia)
{
    QString fault;
    std::optional<Documento> documento = Documento::abre(caminho, fault);
    if (!documento)
        return tell(fault);
    JanelaOficina window(*std::move(documento), comMidia);
    if (roteiro > 0)
        window.mostraRoteiro(roteiro);
    window.show();
    return QApplication::exec();
}

int main(int argc, char **argv)
{
    QStringList words = commandLineWords(argc, argv).mid(1);
    QString cfg;
    if (words.value(0) == "--cfg"_L1) {
        cfg = words.value(1);
        words.remove(0, qMin<qsizetype>(2, words.size()));
    }
    Aplicacao app(argc, argv);
    vesteAplicacao();
    QApplication::setQuitOnLastWindowClosed(true);
    const bool comMidia = loadConfiguration(cfg);
    QString file = words.value(0);
    if (file.isEmpty())
        file = QFileDialog::getOpenFileName(
            nullptr, u"Abrir"_s, {}, u"Fontes, blocos e pacotes (*.txt *.edb *.EDB *.quorel)"_s);
    if (file.isEmpty())
        return 0;
    if (file.endsWith(u".quorel"_s, Qt::CaseInsensitive))
        return install(file);
    return write(file, words.value(1).toInt(), comMidia);
}
