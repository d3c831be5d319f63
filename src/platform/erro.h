#pragma once

#include <QString>

#include <exception>

namespace quorel {

/// Numbers of the run-time failures that the system's behaviour depends on.
enum FalhaExecucao : int {
    kFalhaFoco = 5, ///< the focus can't go there (a hidden window)
    kFalhaEstouro = 6, ///< a number too large for its type
    kFalhaIndice = 9, ///< an array index outside its bounds
    kFalhaTipo = 13, ///< a text that is no number where one is needed
    kFalhaObjeto = 91, ///< an object that is not set
    kFalhaControle = 340, ///< an element of a control array that does not exist
    kFalhaFigura = 481, ///< a damaged picture
};

/// A failure of the run time: a number and its description. Either skipped by ignora() where that is the behaviour,
/// or the end of the program.
class ErroExecucao : public std::exception
{
public:
    explicit ErroExecucao(int numero); ///< with the Portuguese description of that number
    ErroExecucao(int numero, const QString &descricao);
    ~ErroExecucao() override;

    int numero() const { return mNumero; }
    QString descricao() const { return mDescricao; }
    const char *what() const noexcept override; ///< number, blank and description, UTF-8

private:
    int mNumero;
    QString mDescricao;
    QByteArray mTexto;
};

/// Runs one statement whose run-time failure is to be passed over.
template <typename Statement>
void ignora(Statement &&statement)
{
    try {
        statement();
    } catch (const ErroExecucao &) { // the next statement follows, as the caller says
    }
}

} // namespace quorel
