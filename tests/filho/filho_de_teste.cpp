#include "filho/filho.h"
#include "platform/aplicacao.h"
#include "platform/fim.h"

#include <QTimer>

using namespace Qt::StringLiterals;

/// A child program that answers by itself: a lesson "proxima X" sends X on, "anterior X" back, and so forth. It ends
/// with 3 when a send finds no shell.
int main(int argc, char **argv)
{
    using namespace quorel;
    Aplicacao app(argc, argv);
    Filho filho(u"Filho de teste"_s);
    QObject::connect(&filho, &Filho::aula, &filho, [&filho](const QString &linha) {
        const QString word = linha.section(u' ', 0, 0);
        const QString text = linha.section(u' ', 1);
        bool taken = true;
        if (word == "proxima"_L1)
            taken = filho.proxima(text);
        else if (word == "proxima_e_diz"_L1) // a lesson that comes within the send is told after it
            taken = filho.proxima(text) && filho.resposta(filho.aulaPendente() ? u"pendente"_s : u"nada"_s);
        else if (word == "anterior"_L1)
            taken = filho.anterior(text);
        else if (word == "tamanho"_L1)
            taken = filho.resposta(QString::number(linha.size()));
        else if (word == "enorme"_L1)
            taken = !filho.resposta(QString(204800, u'x')) && filho.resposta(QString(204799, u'x'));
        else if (word == "jogo"_L1)
            taken = filho.pedeJogo();
        if (!taken)
            encerraPrograma(3);
    });
    QObject::connect(&filho, &Filho::controle, &filho, [&filho](const QString &palavra) { filho.resposta(palavra); });
    QObject::connect(
        &filho, &Filho::jogo, &filho, [&filho](const QString &jogo) { filho.resposta(u"jogo="_s + jogo); });
    QObject::connect(&filho, &Filho::encerra, &filho, [] { encerraPrograma(0); });
    QTimer::singleShot(0, &filho, [&filho] { filho.aluno(42); }); // before any message: to who started the program
    return QApplication::exec();
}
