#include "oficina/instalador.h"

#include "platform/caminho.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr QSize kJanela(760, 480);

Instalador::Instalador(const QString &pacote, QWidget *parent)
    : QDialog(parent), mDestinos(pacote::destinosDaConfiguracao())
{
    buildLayout();
    readPack(pacote);
}

Instalador::~Instalador() = default;

void Instalador::buildLayout()
{
    setObjectName(u"Instalador"_s);
    setWindowTitle(u"Pacote de lições"_s);
    resize(kJanela);
    const auto label = [this](const QString &name) {
        auto *made = new QLabel(this);
        made->setObjectName(name);
        made->setTextFormat(Qt::PlainText);
        made->setWordWrap(true);
        return made;
    };
    mCabeca = label(u"LblPacote"_s);
    mResultado = label(u"LblResultado"_s);
    mLista = new QListWidget(this);
    mLista->setObjectName(u"LstPassos"_s);
    mLista->setAccessibleName(u"O que será feito"_s);
    mSubstitui =
        new QCheckBox(u"S&ubstituir os arquivos que já existem com outro conteúdo (fica uma cópia deles)"_s, this);
    mSubstitui->setObjectName(u"ChkSubstitui"_s);
    mAndamento = new QProgressBar(this);
    mAndamento->hide();
    const auto button = [this](const QString &name, const QString &face) {
        auto *made = new QPushButton(face, this);
        made->setObjectName(name);
        return made;
    };
    mInstala = button(u"CmdInstalar"_s, u"&Instalar"_s);
    mRetira = button(u"CmdRetirar"_s, u"&Retirar o que foi instalado"_s);
    mFecha = button(u"CmdFechar"_s, u"&Fechar"_s);
    auto *row = new QHBoxLayout;
    row->addWidget(mRetira);
    row->addStretch();
    row->addWidget(mFecha);
    row->addWidget(mInstala);
    auto *column = new QVBoxLayout(this);
    column->addWidget(mCabeca);
    column->addWidget(mLista, 1);
    column->addWidget(mSubstitui);
    column->addWidget(mAndamento);
    column->addWidget(mResultado);
    column->addLayout(row);
    connect(mInstala, &QPushButton::clicked, this, &Instalador::install);
    connect(mRetira, &QPushButton::clicked, this, &Instalador::takeAway);
    connect(mFecha, &QPushButton::clicked, this, [this] {
        mCancel = true;
        if (!mAndamento->isVisible())
            reject();
    });
}

void Instalador::readPack(const QString &pacote)
{
    QStringList faults;
    mPacote = pacote::Pacote::abre(pacote, faults);
    if (mPacote) {
        const pacote::ManifestoRec &m = mPacote->manifesto();
        mCabeca->setText(u"%1%2\nde %3, licença %4"_s.arg(
            m.title, m.version.isEmpty() ? QString() : u", versão "_s + m.version, m.authors.join(u", "_s), m.license));
        if (auto plan = pacote::planeja(*mPacote, mDestinos, faults))
            mPassos = *std::move(plan);
        else
            mPacote.reset();
    } else {
        mCabeca->setText(QFileInfo(pacote).fileName());
    }
    showPlan();
    if (!mPacote) {
        mLista->addItems(faults);
        mResultado->setText(u"Este pacote não pode ser instalado. Nada foi mudado."_s);
    }
}

void Instalador::showPlan()
{
    const auto word = [](pacote::Estado estado) {
        switch (estado) {
        case pacote::Estado::Novo:
            return u"novo: "_s;
        case pacote::Estado::Igual:
            return u"já está: "_s;
        case pacote::Estado::Outro:
            return u"já existe com outro conteúdo: "_s;
        case pacote::Estado::Impedido:
            break;
        }
        return u"não pode ser posto: "_s;
    };
    mLista->clear();
    for (const pacote::Passo &each : mPassos)
        mLista->addItem(word(each.estado) + QDir::toNativeSeparators(each.caminho));
    const auto has = [this](pacote::Estado e) { return std::ranges::count(mPassos, e, &pacote::Passo::estado) > 0; };
    mSubstitui->setVisible(has(pacote::Estado::Outro));
    mInstala->setEnabled(mPacote && (has(pacote::Estado::Novo) || has(pacote::Estado::Outro)));
    const QString folder = nativePath(mDestinos.recibos);
    mRetira->setVisible(
        mPacote && pacote::leRecibo(folder, pacote::nomeDoRecibo(mPacote->manifesto().title)).has_value());
}

pacote::Progresso Instalador::progress()
{
    return [this](qsizetype done, qsizetype all) {
        mAndamento->setMaximum(int(all));
        mAndamento->setValue(int(done));
        QApplication::processEvents();
        return !mCancel;
    };
}

void Instalador::install()
{
    mCancel = false;
    mAndamento->show();
    mInstala->setEnabled(false);
    mRetira->setEnabled(false);
    mFecha->setText(u"&Cancelar"_s);
    const pacote::ResultadoRec done =
        pacote::instala(*mPacote, mPassos, mDestinos, mSubstitui->isChecked(), progress());
    mFecha->setText(u"&Fechar"_s);
    mRetira->setEnabled(true);
    const QString counts = u"%1 arquivos postos, %2 já estavam, %3 deixados como estão."_s.arg(done.postos)
                               .arg(done.iguais)
                               .arg(done.deixados);
    finish(done.falha.isEmpty() ? counts + u" As lições aparecem quando o Quorel for aberto de novo."_s
                                : counts + u'\n' + done.falha);
}

void Instalador::takeAway()
{
    const QString folder = nativePath(mDestinos.recibos);
    const auto recibo = pacote::leRecibo(folder, pacote::nomeDoRecibo(mPacote->manifesto().title));
    if (!recibo)
        return;
    const pacote::RetiradaRec done = pacote::retira(*recibo, mDestinos);
    finish(u"%1 arquivos retirados, %2 devolvidos, %3 ficam: mudaram desde então, ou são de outro pacote.%4"_s
               .arg(done.retirados)
               .arg(done.devolvidos)
               .arg(done.deixados.size())
               .arg(done.falha.isEmpty() ? QString() : u'\n' + done.falha));
}

/// Tells what came of it, and what would be done now.
void Instalador::finish(const QString &texto)
{
    mAndamento->hide();
    mResultado->setText(texto);
    QStringList faults;
    mPassos = pacote::planeja(*mPacote, mDestinos, faults).value_or(std::vector<pacote::Passo>());
    showPlan();
}

} // namespace quorel
