#pragma once

#include "reports/fgraficos.h"
#include "visual/janela_ativa.h"

#include <QDate>
#include <QString>

#include <functional>
#include <memory>

namespace quorel::teste {

/// The day on which the tests' clock stands still, at noon.
inline const QDate kHoje{2026, 3, 20};

/// A register with the class "1º ano A" (10) and the pupil Ana (20), who is the current one, below the test's Windows
/// directory; block files whose first Roteiro (code 100, 200, …) no index finds: Ciências 101 and 102, Matemática 201,
/// Português 301, Desenvolvimento Sensório Motor 401. The window is made, not loaded.
class CenarioGraficos final
{
public:
    explicit CenarioGraficos(const QString &aluno = QStringLiteral("Ana"));
    ~CenarioGraficos();

    /// Adds a row to the log of the current pupil. @param data  "yyyy-MM-dd HH:mm:ss"
    void log(const QString &data, int roteiro, const QString &respostas);
    void sql(const QString &comando);

    FGraficos &janela() { return *mJanela; }
    void clicaLinha(int linha); ///< of LstDisciplinas, from 0
    void clica(const QString &botao);
    void mostraEFaz(const std::function<void()> &acao); ///< shows it modally; the action has to hide it
    QString figuras() const; ///< of the chart, as a screen reader hears them

private:
    JanelaAtiva mAtiva;
    std::unique_ptr<FGraficos> mJanela;
};

} // namespace quorel::teste
