#pragma once

#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "lessons/vista_blocos.h"
#include "platform/erro.h"

#include <QStringList>

namespace quorel::teste {

/// Stands for the windows and writes down what was asked of them.
struct VistaGravada final : VistaBlocos
{
    VistaGravada() { setVistaBlocos(this); }
    ~VistaGravada() override { setVistaBlocos(nullptr); }
    void focusBlocos() override
    {
        calls << QStringLiteral("focus");
        if (hidden)
            throw ErroExecucao(kFalhaFoco);
    }
    void unloadBlocos() override { calls << QStringLiteral("unload"); }
    Janela handlePrincip() override
    {
        if (gRespostas.size() > largest.size())
            largest = gRespostas;
        return janelaBlocos();
    }
    Janela handleActive() override { return 0; }

    bool hidden = false;
    QStringList calls;
    QString largest; ///< the most answers that stood there at a send
};

/// One Roteiro of code 77 with these lessons, all of one type, as the only one read.
inline void umRoteiro(const QStringList &linhas, const QString &tipo)
{
    gRoteiros.dimension(1);
    RoteiroRec &roteiro = gRoteiros.edit(1);
    roteiro.Cod = 77;
    roteiro.Nome = QStringLiteral("Rota");
    roteiro.Aulas.dimension(int(linhas.size()));
    for (int i = 1; i <= linhas.size(); ++i)
        roteiro.Aulas.edit(i) = {QString::number(i), {}, linhas[i - 1], tipo, {}};
    gRotAtual = 1;
    gAulaAtual = 1;
}

} // namespace quorel::teste
