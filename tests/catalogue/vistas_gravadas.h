#pragma once

#include "catalogue/vistas.h"
#include "platform/erro.h"

#include <QStringList>

#include <functional>
#include <utility>

namespace quorel::teste {

/// The windows' sides, writing down what they are told, one line a call, in one list.
struct VistasGravadas final : VistaRoteiros, VistaPalco, VistaMeses
{
    QStringList log;
    QString mes = QStringLiteral("1");
    int falha = 0; ///< loadPicture() throws this number
    std::function<void(int n)> onLoad = [](int) {}; ///< runs at the end of loadPicture()
    std::function<void()> onShow = [] {}; ///< runs inside showBlocos()

    VistasGravadas() { usaVistas({this, this, this}); }
    ~VistasGravadas() override { usaVistas({}); }
    /// The log in one line. Empties it.
    QString calls() { return std::exchange(log, {}).join(QStringLiteral("; ")); }

    void hideAll() override { tell("hideAll"); }
    void loadPicture(int n, const QString &caminho) override
    {
        need(n);
        if (falha != 0)
            throw ErroExecucao(falha);
        tell("load %1 %2", n, caminho.section(u'\\', -1));
        onLoad(n);
    }
    void setTag(int n, const QString &titulo) override
    {
        need(n);
        tell("tag %1 %2", n, titulo);
    }
    void showButton(int n) override
    {
        need(n);
        tell("show %1", n);
    }

    void hidePrincip() override { tell("hidePrincip"); }
    void showBlocos() override
    {
        tell("showBlocos");
        onShow();
    }
    void keepBlocosVisible() override { tell("keepBlocosVisible"); }
    void setTitulo(const QString &texto) override { tell("titulo %1", texto); }
    void setManualTag(const QString &tag) override { tell("manual %1", tag); }
    void hideOne(int n) override { tell("hide %1", n); }

    void addMonth(int n, int left, int top) override { tell("month %1 at %2,%3", n, left, top); }
    void setCaption(int n, const QString &texto) override { tell("caption %1 %2", n, texto); }
    void showMonth(int n) override { tell("showMonth %1", n); }
    void setScrollMaximum(int twips) override { tell("maximum %1", twips); }
    QString selectedMonth() const override { return mes; }

private:
    template <typename... Args>
    void tell(const char *call, const Args &...args)
    {
        QString line = QString::fromLatin1(call);
        ((line = line.arg(args)), ...);
        log += line;
    }
    static void need(int n)
    {
        if (n > kNumBotoes)
            throw ErroExecucao(kFalhaControle);
    }
};

} // namespace quorel::teste
