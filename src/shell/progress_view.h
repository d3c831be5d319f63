#pragma once

#include "lessons/vista_andamento.h"
#include "shell/roteiro_progress.h"

#include <memory>

namespace quorel {

class ProgressStrip;

/// Keeps how far the Roteiro is and shows it in a strip, which is made when the first lesson begins.
class ProgressView final : public VistaAndamento
{
public:
    ProgressView();
    ~ProgressView() override;

    void aulaBegan(int aula, int count) override;
    void programAwaited(const QString &title) override;
    void answerTaken(const QString &answer) override;
    void roteiroEnded() override;
    void roteiroLeft() override;

private:
    ProgressStrip &strip();

    RoteiroProgress mProgress;
    std::unique_ptr<ProgressStrip> mStrip;
};

} // namespace quorel
