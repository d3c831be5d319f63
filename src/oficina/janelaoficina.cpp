#include "oficina/janelaoficina.h"

#include "autoria/figurefile.h"
#include "autoria/mediaplace.h"
#include "oficina/editordefonte.h"
#include "oficina/escolhafigura.h"
#include "oficina/previa.h"
#include "platform/caminho.h"
#include "platform/costuras.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTextDocument>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quorel {

static constexpr auto kPausa = 200ms; // a rest in typing
static constexpr auto kCalma = 100ms; // another program's writing, which may come in pieces

JanelaOficina::JanelaOficina(Documento documento, bool comMidia) : mDocumento(std::move(documento)), mComMidia(comMidia)
{
    mPausa.setSingleShot(true);
    mPausa.setInterval(kPausa);
    mCalma.setSingleShot(true);
    mCalma.setInterval(kCalma);
    buildLayout();
    mEditor->setPlainText(mDocumento.texto());
    mEditor->document()->setModified(false);
    connectEvents();
    addKeys();
    watch();
    read();
    mEditor->setFocus();
}

void JanelaOficina::connectEvents()
{
    connect(&mPausa, &QTimer::timeout, this, &JanelaOficina::read);
    connect(&mCalma, &QTimer::timeout, this, &JanelaOficina::fileChanged);
    connect(&mVigia, &QFileSystemWatcher::fileChanged, this, [this] { mCalma.start(); });
    connect(&mVigia, &QFileSystemWatcher::directoryChanged, this, [this] { mCalma.start(); });
    connect(mEditor, &QPlainTextEdit::textChanged, this, [this] { mPausa.start(); });
    connect(mEditor, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        if (!mPausa.isActive())
            showAula();
    });
    connect(mEditor->document(), &QTextDocument::modificationChanged, this, &JanelaOficina::showState);
    connect(mEditor, &EditorDeFonte::fotoSolta, this, &JanelaOficina::bringPhoto);
    connect(mPrevia, &Previa::proxima, this, [this] { goToAula(1); });
    connect(mPrevia, &Previa::anterior, this, [this] { goToAula(-1); });
    connect(mAchados, &QListWidget::itemActivated, this, [this](QListWidgetItem *item) { goToFinding(*item); });
    connect(mAchados, &QListWidget::itemClicked, this, [this](QListWidgetItem *item) { goToFinding(*item); });
    connect(mRecarrega, &QPushButton::clicked, this, [this] {
        mAviso->hide();
        mEditor->troca(mDocumento.texto());
        mEditor->document()->setModified(false);
    });
    connect(mFica, &QPushButton::clicked, mAviso, &QWidget::hide);
}

bool JanelaOficina::isChanged() const
{
    return mEditor->document()->isModified();
}

void JanelaOficina::read()
{
    mPausa.stop();
    mLeitura = leFonte(mEditor->toPlainText(), mDocumento.caminho(), mDocumento.destino(), mComMidia);
    mEditor->mostraAchados(mLeitura.achados);
    showFindings();
    showAula();
    showState();
}

void JanelaOficina::showFindings()
{
    const int row = mAchados->currentRow();
    mAchados->clear();
    for (const Finding &each : mLeitura.achados) {
        const QString how = each.severity == Severity::Error ? u"erro"_s
            : each.severity == Severity::Warning             ? u"aviso"_s
                                                             : u"nota"_s;
        auto *item = new QListWidgetItem(u"linha %1: %2: %3"_s.arg(each.place.line).arg(how, each.text), mAchados);
        item->setData(Qt::UserRole, each.place.line);
        item->setData(Qt::UserRole + 1, each.place.column);
    }
    mAchados->setCurrentRow(qMin(row, mAchados->count() - 1));
}

void JanelaOficina::showAula()
{
    if (!mLeitura.entendida && !mLeitura.lugares.empty())
        return; // the last one that could be shown stays
    const LugarDaAula *place = aulaDaLinha(mLeitura, mEditor->linha());
    if (!place && !mLeitura.lugares.empty())
        place = &mLeitura.lugares.front(); // above the first Roteiro
    const auto roteiro = place ? std::size_t(place->roteiro) - 1 : 0;
    const auto aula = place ? std::size_t(place->aula) - 1 : 0;
    if (!place || roteiro >= mLeitura.roteiros.size() || aula >= mLeitura.roteiros[roteiro].size())
        return mPrevia->mostraNada(u"Escreva um roteiro com uma aula: ela aparece aqui."_s);
    const auto &aulas = mLeitura.roteiros[roteiro];
    mPrevia->mostra(aulas[aula], u"Roteiro %1, aula %2 de %3"_s.arg(place->roteiro).arg(place->aula).arg(aulas.size()));
}

void JanelaOficina::showState()
{
    const QString name = QFileInfo(mDocumento.caminho()).fileName();
    setWindowTitle(u"%1%2 - Oficina de lições"_s.arg(isChanged() ? u"* "_s : QString(), name));
    const auto mend =
        std::ranges::count_if(mLeitura.achados, [](const Finding &each) { return each.severity != Severity::Note; });
    const QString found = mend == 0 ? u"Nada a consertar."_s : u"%1 a consertar (F4 leva ao próximo)."_s.arg(mend);
    mRodape->setText(found + u"  "_s + mEstado);
}

void JanelaOficina::goToAula(int step)
{
    const LugarDaAula *place = aulaDaLinha(mLeitura, mEditor->linha());
    // A Roteiro's head stands for its first Aula, which is the place behind it.
    const auto &all = mLeitura.lugares;
    auto at = place ? place - all.data() : -1;
    const auto same = [&](std::ptrdiff_t i) {
        return i >= 0 && place && all[std::size_t(i)].roteiro == place->roteiro
            && all[std::size_t(i)].aula == place->aula;
    };
    do
        at += step;
    while (at >= 0 && at < std::ptrdiff_t(all.size()) && same(at));
    if (at >= 0 && at < std::ptrdiff_t(all.size()))
        mEditor->vaiPara({all[std::size_t(at)].linha, 1});
}

void JanelaOficina::goToFinding(const QListWidgetItem &item)
{
    mEditor->vaiPara({item.data(Qt::UserRole).toInt(), item.data(Qt::UserRole + 1).toInt()});
}

void JanelaOficina::nextFinding()
{
    if (mAchados->count() == 0)
        return;
    mAchados->setCurrentRow((mAchados->currentRow() + 1) % mAchados->count());
    goToFinding(*mAchados->currentItem());
}

void JanelaOficina::mostraRoteiro(int roteiro)
{
    Findings unused;
    const BlockSource source = readSource(mEditor->toPlainText().toUtf8(), {}, unused);
    int number = 0;
    for (const ItemSource &item : source.items) {
        const auto *each = std::get_if<RoteiroSource>(&item);
        if (each && (++number == roteiro || each->cod.text.toInt() == roteiro))
            return mEditor->vaiPara(each->place);
    }
}

void JanelaOficina::insertAula(Kind kind)
{
    if (mLeitura.lugares.empty())
        insertRoteiro();
    mEditor->insereAula(QString::fromUtf8(aulaSnippet(kind)));
    read();
}

void JanelaOficina::insertRoteiro()
{
    Findings unused;
    const BlockSource source = readSource(mEditor->toPlainText().toUtf8(), {}, unused);
    int code = 90000; // behind it lie the authors' own
    for (const ItemSource &item : source.items) {
        if (const auto *each = std::get_if<RoteiroSource>(&item))
            code = qMax(code, each->cod.text.toInt());
    }
    mEditor->moveCursor(QTextCursor::End);
    mEditor->insereAula(u"ROTEIRO %1 Nome do roteiro\ndesc: O que há nele.\n"_s.arg(code + 1));
    read();
}

void JanelaOficina::chooseFigure()
{
    if (!mComMidia)
        return;
    EscolhaFigura chooser(nativePath(mediaRoot() + u"\\Fig"_s), this);
    connect(&chooser, &EscolhaFigura::novaFoto, this, [this] {
        const QString photo =
            QFileDialog::getOpenFileName(this, u"Trazer uma foto"_s, {}, u"Figuras (*.jpg *.jpeg *.png *.gif *.bmp)"_s);
        if (!photo.isEmpty())
            bringPhoto(photo);
    });
    if (chooser.exec() == QDialog::Accepted && !chooser.nome().isEmpty())
        mEditor->insereFigura(chooser.nome());
}

void JanelaOficina::bringPhoto(const QString &native)
{
    QString fault;
    const QImage image = figureFrom(native, FigureUse::Page, fault);
    if (image.isNull()) {
        caixa({.texto = fault, .icone = Icone::Critico});
        return;
    }
    const QString name =
        perguntaTexto({.texto = u"Nome da figura, de 1 a 8 letras:"_s, .titulo = u"Trazer uma foto"_s, .proposta = {}});
    if (name.isEmpty())
        return;
    if (putFigure(image, name, false, fault).isEmpty())
        caixa({.texto = fault, .icone = Icone::Critico});
    else
        mEditor->insereFigura(name);
}

/// The file and its folder: most editors put a new file in the place of the old one.
void JanelaOficina::watch()
{
    const QString folder = QFileInfo(mDocumento.caminho()).absolutePath();
    if (!mVigia.files().contains(mDocumento.caminho()) && QFileInfo::exists(mDocumento.caminho()))
        mVigia.addPath(mDocumento.caminho());
    if (!mVigia.directories().contains(folder))
        mVigia.addPath(folder);
}

void JanelaOficina::fileChanged()
{
    watch();
    if (!mDocumento.mudouNoDisco().value_or(false))
        return;
    if (isChanged()) {
        mAviso->show();
        return;
    }
    mEditor->troca(mDocumento.texto());
    mEditor->document()->setModified(false);
    read();
}

bool JanelaOficina::save()
{
    if (mDocumento.destino().isEmpty()) {
        const QString folder = QFileInfo(mDocumento.caminho()).absolutePath();
        const QString chosen = QFileDialog::getSaveFileName(this, u"Bloco que se faz desta fonte (MMAADDNV.EDB)"_s,
            folder + u"/0226MAF1.EDB"_s, u"Blocos (*.edb *.EDB)"_s);
        if (chosen.isEmpty())
            return false;
        mDocumento.setDestino(chosen);
    }
    const Documento::Gravacao done = mDocumento.grava(mEditor->toPlainText());
    if (!done.falha.isEmpty()) {
        caixa({.texto = done.falha, .icone = Icone::Critico});
        return false;
    }
    mAviso->hide();
    mEstado = done.feito ? u"Feito: "_s + QDir::toNativeSeparators(mDocumento.destino())
                         : u"A fonte foi gravada; o bloco não foi feito: há erros."_s;
    mEditor->document()->setModified(false);
    watch();
    read();
    return true;
}

void JanelaOficina::closeEvent(QCloseEvent *event)
{
    if (!isChanged())
        return event->accept();
    const Resposta answer = caixa({.texto = u"Há mudanças que não foram salvas. Fechar e perdê-las?"_s,
        .titulo = u"Oficina de lições"_s,
        .icone = Icone::Aviso,
        .botoes = Botoes::OkCancela});
    event->setAccepted(answer == Resposta::Ok);
}

} // namespace quorel
