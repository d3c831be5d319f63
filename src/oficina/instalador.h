#pragma once

#include "pacote/instalacao.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace quorel {

/// What a pack would put where, and the button that does it; for who opens one by a double click.
class Instalador final : public QDialog
{
    Q_OBJECT
public:
    /// @param pacote  native path; one that can't be installed is told, and nothing else can be done
    explicit Instalador(const QString &pacote, QWidget *parent = nullptr);
    ~Instalador() override;

private:
    void buildLayout();
    void readPack(const QString &pacote);
    void showPlan();
    void install();
    void takeAway();
    void finish(const QString &texto);
    pacote::Progresso progress();

    std::unique_ptr<pacote::Pacote> mPacote;
    pacote::Destinos mDestinos;
    std::vector<pacote::Passo> mPassos;
    bool mCancel = false;
    QLabel *mCabeca = nullptr; // children, from buildLayout() on
    QListWidget *mLista = nullptr;
    QCheckBox *mSubstitui = nullptr;
    QProgressBar *mAndamento = nullptr;
    QLabel *mResultado = nullptr;
    QPushButton *mInstala = nullptr;
    QPushButton *mRetira = nullptr;
    QPushButton *mFecha = nullptr;
};

} // namespace quorel
