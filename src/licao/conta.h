#pragma once

#include <QString>

namespace quorel {

/// A pocket calculator without keys: what it shows after each of them. It works off the operations in the order in
/// which they are typed; numbers have a decimal comma and up to 12 digits.
class Conta final
{
public:
    /// Presses a key: "0" to "9", ",", "+", "-", "*", "/", "=", "C" (begin again), "<" (take the last digit back).
    /// Others are passed over.
    void tecla(char16_t tecla);
    QString visor() const { return mVisor; } ///< what it shows; "Erro" after a division by 0 or a number too long

private:
    void digito(char16_t digito);
    void operacao(char16_t operacao);
    double valor() const;
    void mostra(double valor);

    QString mVisor = QStringLiteral("0");
    double mGuardado = 0;
    char16_t mOperacao = u'='; ///< the one that waits for its second number; "=" for none
    bool mNovo = true; ///< the next digit begins a number
};

} // namespace quorel
