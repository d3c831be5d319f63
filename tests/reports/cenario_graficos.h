#pragma once

#include "apoio.h"
#include "reports/estado.h"
#include "reports/fgraficos.h"
#include "reports/grafico.h"
#include "startup/estado.h"
#include "support/suporte.h"
#include "visual/janela_ativa.h"

#include <QListWidget>
#include <QString>

#include <functional>
#include <memory>

namespace quorel::teste {

/// At the noon of 20 March 2026: a register with the class "1º ano A" (10) and the pupil Ana (20), who is the current
/// one; block files whose first Roteiro (code 100, 200, …) no index finds: Ciências 101 and 102, Matemática 201,
/// Português 301, Desenvolvimento Sensório Motor 401. The window is made, not loaded.
class CenarioGraficos final
{
public:
    explicit CenarioGraficos(const QString &aluno = QStringLiteral("Ana"));
    ~CenarioGraficos();

    /// Adds a row to the log of the current pupil. @param data  "yyyy-MM-dd HH:mm:ss"
    void log(const QString &data, int roteiro, const QString &respostas);
    /// Right and wrong: Ciências 3 and 1 in two rows, Matemática 0 and 2, Português 4 and 0, Desenv. 1 and 3.
    void logEmTodas();

    FGraficos &janela() { return *mJanela; }
    QListWidget &lista();
    CrtGrafico &grafico();
    QStringList planilha(); ///< the rows of the sheet, header first, their cells joined by "|"

    /// Steps of a teacher, "; " between them: "linha=0" clicks a line of LstDisciplinas, "MskX=010326" types into a box
    /// that is emptied first, "X?text" fails the test unless X shows the text (see mostra), another name clicks.
    void faz(const QString &passos);

    /// What a box of a date shows. By other names: "figuras", the chart as a screen reader hears it; "linha", the one
    /// chosen; "linhas", how many rows the sheet has; of any other control "sim" when it is visible, else "não".
    QString mostra(const QString &nome);
    void clicaLinha(int linha, Qt::KeyboardModifier tecla = Qt::NoModifier); ///< of LstDisciplinas, from 0
    void mostraEFaz(const std::function<void()> &acao); ///< shows it modally; the action has to hide it
    void fazOutra(); ///< makes the window anew, as after it was closed by its frame

private:
    Registro mRegistro;
    JanelaAtiva mAtiva;
    std::unique_ptr<FGraficos> mJanela;
};

} // namespace quorel::teste
