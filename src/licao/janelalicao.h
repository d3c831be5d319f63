#pragma once

#include "licao/exercicio.h"
#include "licao/preferences.h"
#include "licao/programa.h"

#include <span>

class QHBoxLayout;
class QPushButton;
class QScrollArea;

namespace quorel {

class Calculadora;
class Editor;
class Faixa;
class Pagina;
class Reading;
class ReadingTools;
class Retorno;

/// Where a lesson stands in its Roteiro.
struct LugarRec
{
    bool Primeira = false; ///< there is nothing to go back to
    bool Ultima = false; ///< going on ends the Roteiro
};

/// The window of the player: a band with the heading, the lesson with its exercise, what was right or wrong about the
/// answer, and the buttons to go on, back and out. It knows no shell; it says what the pupil wants.
class JanelaLicao final : public QWidget
{
    Q_OBJECT
public:
    JanelaLicao(Programa programa, Midia midia, Preferences preferences = {});

    /// Shows a lesson from its first page, in the place of what stood there.
    void mostraLicao(const LicaoRec &licao, LugarRec lugar);

    /// Shows a message with the button to leave, and with the one to go on where that makes sense.
    void mostraAviso(const QString &titulo, const QString &texto, bool comProxima);

    /// The program alone, without a shell: what it is for. The drawing tool draws, the calculator calculates.
    void mostraSozinho();

    /// "A" when the first answer to the lesson was right, "E" when it was wrong, empty while nothing was answered.
    QString resposta() const { return mResposta; }

    /// Whether a page's sound is played as the page comes, and not only by its button. Yes at first.
    void setSomSozinho(bool sozinho) { mSomSozinho = sozinho; }

    void stopReading(); ///< nothing sounds any more

    QWidget *interna() const { return mMiolo; } ///< the inner window

signals:
    void proxima(); ///< past the last page
    void anterior(); ///< before the first page
    void sai();

protected:
    void closeEvent(QCloseEvent *event) override; ///< never closes by itself: closing is leaving
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Modo { Aviso, Licao, Sozinho };

    void buildLayout();
    QHBoxLayout *buildButtons();
    void connectEvents();
    void connectTools();
    void resizeType(int size);
    void switchFullScreen(bool on);

    void begin(Modo modo, LicaoRec licao, LugarRec lugar);
    void showPage();
    bool sideBySide() const;
    QWidget *buildContent(bool estreita);
    void showSide();
    void updateButtons();
    void focusFirst();
    void goOn();
    void goBack();
    void check();
    void answerChanged();
    std::span<const PecaRec> piecesOfPage() const;
    std::vector<PecaRec> shownPieces() const; // as the preferences want them
    bool paged() const;
    bool lastPage() const;
    bool unchecked() const; // an answer stands there that was not checked yet
    bool hasEditor() const;

    Programa mPrograma;
    Midia mMidia;
    Preferences mPreferences;
    Modo mModo = Modo::Aviso;
    bool mAvisoProxima = false;
    LicaoRec mLicao;
    LugarRec mLugar;
    int mPagina = 0; // 0-based
    int mOuvida = -1; // last page whose sound was played by itself
    bool mSomSozinho = true;
    QString mResposta;
    bool mSuja = false; // the answer changed since it was checked

    Exercicio *mExercicio = nullptr; // part of the content; null on pages without one
    Pagina *mFolha = nullptr; // likewise

    Reading *mReading; // children
    ReadingTools *mTools = nullptr; // likewise, from buildLayout() on
    Faixa *mFaixa = nullptr;
    QWidget *mMiolo = nullptr;
    QScrollArea *mRolagem = nullptr;
    QHBoxLayout *mColunas = nullptr;
    Calculadora *mCalculadora = nullptr; // only in the calculator
    Editor *mEditor = nullptr;
    Retorno *mRetorno = nullptr;
    QPushButton *mSai = nullptr;
    QPushButton *mAnterior = nullptr;
    QPushButton *mConfere = nullptr;
    QPushButton *mProxima = nullptr;
};

} // namespace quorel
