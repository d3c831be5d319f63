#include "licao/aparencia.h"
#include "licao/sessao.h"
#include "platform/aplicacao.h"
#include "platform/codec.h"
#include "platform/fim.h"
#include "platform/zoom.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

/// The text behind an option, taken out of the arguments; empty when it isn't there.
QString takeOption(QStringList &arguments, const QString &option)
{
    const qsizetype at = arguments.indexOf(option);
    if (at < 0 || at + 1 >= arguments.size())
        return {};
    QString value = arguments.takeAt(at + 1);
    arguments.removeAt(at);
    return value;
}

/// For who writes lessons: one of them from a file, without a shell.
QString lessonFromFile(const QString &native)
{
    QFile file(native);
    return file.open(QIODevice::ReadOnly) ? quorel::decode1252(file.readAll()) : QString();
}

} // namespace

int main(int argc, char **argv)
{
    using namespace quorel;
    QStringList arguments = commandLineWords(argc, argv);
    const QString arquivoProprio = arguments.isEmpty() ? QString() : arguments.takeFirst();
    const QString arquivo = takeOption(arguments, u"--aula"_s);
    const QString nome = takeOption(arguments, u"--programa"_s);
    const bool byHand = !arquivo.isEmpty() || !nome.isEmpty();
    // As it came: what stands between the words belongs to a path.
    const ParametrosRec parametros = leParametros(byHand ? arguments.join(u' ') : rawCommandLine(argc, argv));
    const Programa programa = programaDe(nome.isEmpty() ? arquivoProprio : nome);

    Aplicacao app(argc, argv, inheritedZoom());
    vesteAplicacao(app);
    const CaraterRec &qual = carater(programa);
    const Midia midia = midiaDaConfiguracao(parametros.Cfg);
    JanelaLicao janela(programa, midia, preferencesOfConfiguration());
    Filho filho(qual.titulo.toString(), &janela, {qual.interna.toString(), janela.interna()});
    Sessao sessao(filho, janela);
    QObject::connect(&sessao, &Sessao::fim, &app, [] { encerraPrograma(); });

    if (!arquivo.isEmpty())
        sessao.aula(lessonFromFile(arquivo));
    else if (parametros.Gancho)
        sessao.espera();
    else
        janela.mostraSozinho();
    janela.show();
    return QApplication::exec();
}
