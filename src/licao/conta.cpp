#include "licao/conta.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kDigitos = 12; // digits on the display
static constexpr double kLimite = 1e12; // first number that doesn't fit

void Conta::tecla(char16_t tecla)
{
    const bool erro = mVisor == "Erro"_L1;
    if (tecla == u'C' || (erro && tecla != u'='))
        *this = Conta();
    if ((tecla >= u'0' && tecla <= u'9') || tecla == u',')
        digito(tecla);
    else if (QStringView(u"+-*/=").contains(tecla))
        operacao(tecla);
    else if (tecla == u'<' && !mNovo) {
        mVisor.chop(1);
        if (mVisor.isEmpty() || mVisor == "-"_L1)
            mVisor = u"0"_s;
    }
}

void Conta::digito(char16_t digito)
{
    if (mNovo)
        mVisor = u"0"_s;
    mNovo = false;
    const bool comma = mVisor.contains(u',');
    if (digito == u',') {
        if (!comma)
            mVisor += u',';
    } else if (mVisor == "0"_L1) {
        mVisor = QChar(digito);
    } else if (mVisor.size() - (comma ? 1 : 0) < kDigitos) {
        mVisor += QChar(digito);
    }
}

void Conta::operacao(char16_t operacao)
{
    if (mVisor == "Erro"_L1)
        return;
    const double segundo = valor();
    if (!mNovo || operacao == u'=') { // an operator right behind another one takes its place
        double result = segundo;
        switch (mOperacao) {
        case u'+':
            result = mGuardado + segundo;
            break;
        case u'-':
            result = mGuardado - segundo;
            break;
        case u'*':
            result = mGuardado * segundo;
            break;
        case u'/':
            result = mGuardado / segundo;
            break;
        default:
            break;
        }
        mostra(result);
        mGuardado = result;
    }
    mOperacao = operacao;
    mNovo = true;
}

double Conta::valor() const
{
    QString text = mVisor;
    return text.replace(u',', u'.').toDouble();
}

void Conta::mostra(double valor)
{
    if (!std::isfinite(valor) || std::abs(valor) >= kLimite) {
        mVisor = u"Erro"_s;
        return;
    }
    const int whole = std::abs(valor) < 1 ? 1 : int(std::floor(std::log10(std::abs(valor)))) + 1;
    mVisor = QString::number(valor, 'f', std::max(0, kDigitos - whole));
    if (mVisor.contains(u'.')) {
        while (mVisor.endsWith(u'0'))
            mVisor.chop(1);
        if (mVisor.endsWith(u'.'))
            mVisor.chop(1);
    }
    if (mVisor == "-0"_L1)
        mVisor = u"0"_s;
    mVisor.replace(u'.', u',');
}

} // namespace quorel
