#pragma once

#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "lessons/vista_blocos.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>

#include <functional>
#include <utility>

namespace quorel::teste {

inline constexpr int kPatience = 30000; ///< ms until something that has to come counts as missing

/// What is received: codes and texts.
using Mensagens = QList<std::pair<qint32, QString>>;

/// The folder as the start of the program leaves it, its messages hooked, with the generic pupil. Stands for the
/// windows and writes down what was asked of them.
struct Cenario final : VistaBlocos
{
    Q_DISABLE_COPY_MOVE(Cenario)
    Cenario()
    {
        failOnWarnings();
        reiniciaLessons();
        reiniciaStartup();
        setVistaBlocos(this);
        InstalaGancho(janelaBlocos());
        gAluno = kGenerico;
        gClasse = kGenerico;
    }
    ~Cenario() override
    {
        RemoveGancho();
        reiniciaLessons();
        reiniciaCatalogue();
        reiniciaCosturas();
    }
    void focusBlocos() override
    {
        calls << "focus";
        if (hidden)
            throw ErroExecucao(kFalhaFoco);
    }
    void unloadBlocos() override { calls << "unload"; }
    Janela handlePrincip() override
    {
        if (gRespostas.size() > largest.size())
            largest = gRespostas;
        if (const auto next = std::exchange(atNextSend, {}))
            next();
        return janelaBlocos();
    }
    Janela handleActive() override { return 0; }

    static void receives(qint32 code, const QString &text) { EnviaTexto(janelaBlocos(), janelaBlocos(), code, text); }

    bool hidden = false;
    std::function<void()> atNextSend; ///< of a lesson or a control word, once
    QStringList calls;
    QString largest; ///< the most answers that stood there at a send
};

/// One Roteiro of code 77 with these lessons, all of one type, as the only one read.
inline void umRoteiro(const QStringList &linhas, const QString &tipo)
{
    gRoteiros.dimension(1);
    RoteiroRec &roteiro = gRoteiros.edit(1);
    roteiro.Cod = 77;
    roteiro.Nome = "Rota";
    roteiro.Aulas.dimension(int(linhas.size()));
    for (int i = 1; i <= linhas.size(); ++i)
        roteiro.Aulas.edit(i) = {QString::number(i), {}, linhas[i - 1], tipo, {}};
    gRotAtual = 1;
    gAulaAtual = 1;
}

/// The installation's child programs, all of them the one for tests, and what they wrote down.
class Filhos final : public ScratchDir
{
public:
    Filhos()
    {
        QDir().mkpath(native("/exe"));
        for (const char *name : {"Zeto", "Desenho", "Vrel", "Livros", "Calc", "calc"})
            QFile::copy(QUOREL_BIN "/filho_licao" QUOREL_SUFFIX, program(name));
        qputenv("FILHO_DIARIO", native("/diario").toUtf8());
        gConfig.ArquivoCnf = "\\cnf\\zeto_cnf.txt";
        gConfig.SetaCFG("ZETO_EXE=" + at("\\exe") + "\r\n");
    }
    QString program(const QString &name) const { return native("/exe/" + name + ".exe"); }
    QStringList lines() const { return QString::fromUtf8(get("/diario")).split('\n', Qt::SkipEmptyParts); }
    QString places() const { return QString::fromUtf8(get("/diario.lugar")); }
    /// What lines begin with while one child runs.
    QString inicio() const { return lines().value(0).section(' ', 0, 1); }
    qint64 process() const { return inicio().section(' ', 1, 1).toLongLong(); }
};

} // namespace quorel::teste
