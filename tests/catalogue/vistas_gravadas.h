#pragma once

#include "catalogue/vistas.h"
#include "platform/erro.h"

#include <QStringList>

#include <functional>

namespace quorel::teste {

/// The windows' sides, writing down what they are told, one line a call, in one list.
struct VistasGravadas final : VistaRoteiros, VistaPalco, VistaMeses
{
    QStringList log;
    QString mes = QStringLiteral("1");
    int falha = 0; ///< loadPicture() throws this number
    std::function<void(int n)> onLoad; ///< runs at the end of loadPicture()
    std::function<void()> onShow; ///< runs inside showBlocos()

    VistasGravadas() { usaVistas({this, this, this}); }
    ~VistasGravadas() override { usaVistas({}); }

    void hideAll() override { log += QStringLiteral("hideAll"); }
    void loadPicture(int n, const QString &caminho) override
    {
        need(n);
        if (falha != 0)
            throw ErroExecucao(falha);
        log += QStringLiteral("load %1 %2").arg(n).arg(caminho.section(u'\\', -1));
        if (onLoad)
            onLoad(n);
    }
    void setTag(int n, const QString &titulo) override
    {
        need(n);
        log += QStringLiteral("tag %1 %2").arg(n).arg(titulo);
    }
    void showButton(int n) override
    {
        need(n);
        log += QStringLiteral("show %1").arg(n);
    }

    void hidePrincip() override { log += QStringLiteral("hidePrincip"); }
    void showBlocos() override
    {
        log += QStringLiteral("showBlocos");
        if (onShow)
            onShow();
    }
    void keepBlocosVisible() override { log += QStringLiteral("keepBlocosVisible"); }
    void setTitulo(const QString &texto) override { log += QStringLiteral("titulo ") + texto; }
    void setManualTag(const QString &tag) override { log += QStringLiteral("manual ") + tag; }
    void hideOne(int n) override { log += QStringLiteral("hide %1").arg(n); }

    void addMonth(int n, int left, int top) override
    {
        log += QStringLiteral("month %1 at %2,%3").arg(n).arg(left).arg(top);
    }
    void setCaption(int n, const QString &texto) override { log += QStringLiteral("caption %1 %2").arg(n).arg(texto); }
    void showMonth(int n) override { log += QStringLiteral("showMonth %1").arg(n); }
    void setScrollMaximum(int twips) override { log += QStringLiteral("maximum %1").arg(twips); }
    QString selectedMonth() const override { return mes; }

private:
    static void need(int n)
    {
        if (n > kNumBotoes)
            throw ErroExecucao(kFalhaControle);
    }
};

} // namespace quorel::teste
