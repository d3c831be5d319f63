#pragma once

#include "visual/janela_base.h"

#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace quorel {

/// Asks a teacher for the password of the current class. Hidden, and still loaded, after a right one.
class Login final : public JanelaBase
{
    Q_OBJECT
public:
    /// @param aceita  is called after a right password, with the tag's number, before the window hides
    Login(JanelaAtiva &ativa, std::function<void(qint16)> aceita);

    void setPergunta(const QString &texto); ///< caption of the prompt; loads the window first
    void setTag(const QString &tag) { mTag = tag; }
    void centraEm(const Lugar &janela); ///< goes to the middle of another window; twips

protected:
    void load() override;
    void activate() override;
    void unload() override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void buildLayout();
    void connectEvents();
    bool isRight() const;
    void ok();
    void cancel();

    std::function<void(qint16)> mAceita;
    QString mTag; ///< number of the button that asked, decimal
    QLabel *mPergunta = nullptr;
    QLineEdit *mTxtPassword = nullptr;
    QPushButton *mCmdOK = nullptr;
    QPushButton *mCmdCancel = nullptr;
};

} // namespace quorel
