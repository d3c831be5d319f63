#pragma once

#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "shell/janelas.h"
#include "support/suporte.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

namespace quorel::teste {

/// A small installation of level F1 below the test's Windows directory, without a register unless one is open:
/// month 1 with Matemática (roteiros 261, 12610 and 7) and Português, month 2 with Ciências, and as many more months
/// as asked for. Then the windows, through the same steps as the start of the program.
class Cenario final
{
public:
    /// @param arquivos  more files to put below QUOREL2001; @param escolas  of several users
    explicit Cenario(int meses = 2, const QStringList &arquivos = {}, bool escolas = true);
    ~Cenario();

    Janelas &janelas() { return *mJanelas; }
    fPrincip &principal() { return mJanelas->principal(); }
    fBlocos &blocos() { return mJanelas->blocos(); }
    fAux &painel() { return mJanelas->painel(); }

    QWidget &controle(const QString &nome); ///< of whichever window has it; fails the test when none has
    void clica(const QString &nome); ///< with the mouse; a hidden control is told that it was clicked
    void abreMatematica(); ///< by its block
    QString roteiros(); ///< the numbers of the pictures that show in fBlocos, blanks between them
    QString tituloBlocos(); ///< what stands above them

    int alunos = 0; ///< how often the register was asked for
    int desempenhos = 0; ///< how often the performance window was asked for

private:
    std::unique_ptr<Janelas> mJanelas;
};

/// Native path of something below the Windows directory of the test.
QString noWindows(const QString &resto);

/// The text of a block file with one lesson in each of the roteiros of these codes.
QByteArray textoBloco(const QString &tema, const QString &objetivo, const QList<int> &codigos);

} // namespace quorel::teste
