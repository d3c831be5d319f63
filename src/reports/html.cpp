#include "reports/html.h"

#include "data/campos.h"
#include "platform/erro.h"

#include <array>
#include <charconv>

namespace quorel {

using namespace Qt::StringLiterals;

void Html::html(const QVariant &Valor)
{
    mHtml = variantText(Valor);
}

void Html::appendLine(const QString &text)
{
    mHtml += text;
    mHtml += "\r\n"_L1;
}

void Html::Pula_Linha(qint16 Quantas)
{
    for (int i = 0; i < Quantas; ++i)
        appendLine(u"<BR>"_s);
}

void Html::InicializaHtml(const QString &Titulo, const QVariant &CorFundo)
{
    mHtml.clear();
    appendLine(u"<HTML> "_s);
    appendLine(u"<TITLE>"_s + Titulo + u"</TITLE>"_s);
    appendLine(u"<BODY bgcolor="_s + variantText(CorFundo) + u'>');
}

void Html::FinalizaHtml()
{
    mHtml += "</BODY></HTML>"_L1;
}

void Html::Negrito()
{
    appendLine(u"<B>"_s);
}

void Html::xNegrito()
{
    appendLine(u"</B>"_s);
}

void Html::Desenha_Linha()
{
    appendLine(u"<HR>"_s);
}

/// An attribute behind a blank; nothing for an empty value.
static QString attribute(const QString &name, const QString &value)
{
    return value.isEmpty() ? QString() : u' ' + name + u'=' + value;
}

void Html::Borda(bool Centralizada, qint16 Espessura, const QString &Largura)
{
    appendLine(u"<TABLE BORDER="_s + QString::number(Espessura) + (Centralizada ? u" ALIGN=CENTER"_s : QString())
        + attribute(u"WIDTH"_s, Largura) + u'>');
}

void Html::BordaLinha()
{
    appendLine(u"<TR>"_s);
}

void Html::BordaColuna(qint32 Alinhamento, const QString &Largura, const QString &Colunas)
{
    static const std::array<QString, 3> words{u"CENTER"_s, u"RIGHT"_s, u"LEFT"_s};
    if (Alinhamento < 0 || Alinhamento >= qint32(words.size()))
        throw ErroExecucao(kFalhaIndice);
    appendLine(u"<TD ALIGN="_s + words[std::size_t(Alinhamento)] + attribute(u"WIDTH"_s, Largura)
        + attribute(u"COLSPAN"_s, Colunas) + u'>');
}

void Html::xBorda()
{
    appendLine(u"</TABLE>"_s);
}

void Html::xBordaLinha()
{
    appendLine(u"</TR>"_s);
}

void Html::xBordaColuna()
{
    appendLine(u"</TD>"_s);
}

void Html::Alinhamento(qint32 Tipo)
{
    // Kept: 1 is left and 2 is right here, the other way round in BordaColuna; the pages are written so.
    static const std::array<QString, 3> words{u"CENTER"_s, u"LEFT"_s, u"RIGHT"_s};
    const bool known = Tipo >= 0 && Tipo < qint32(words.size());
    appendLine(known ? u"<DIV ALIGN="_s + words[std::size_t(Tipo)] + u'>' : QString());
}

void Html::xAlinhamento(qint32)
{
    mHtml += "</DIV>"_L1;
}

void Html::Txt(const QString &Texto, bool Quebra)
{
    appendLine(QString(Texto).replace("\r\n"_L1, "<BR>"_L1));
    if (Quebra)
        Pula_Linha(1);
}

/// The shortest decimal text of a single-precision number.
static QString singleText(float value)
{
    std::array<char, 64> digits; // the smallest number takes 47, the largest 39
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed).ptr;
    return QString::fromLatin1(digits.data(), end - digits.data());
}

static QString sizePart(const QString &name, float size)
{
    return size > 0 ? u' ' + name + u"=\""_s + singleText(size) + u"\" "_s : QString();
}

void Html::Img(const QString &Origem, float Altura, float Largura)
{
    appendLine(
        u"<img SRC=\""_s + Origem + u'"' + sizePart(u"Width"_s, Largura) + sizePart(u"Height"_s, Altura) + u"> "_s);
}

void Html::Font(const QString &Tamanho)
{
    appendLine(u"<FONT SIZE="_s + Tamanho + u'>');
}

void Html::xFont()
{
    appendLine(u"</FONT>"_s);
}

void Html::Traça_Linha(qint16 Espessura)
{
    mHtml += u"<HR SIZE="_s + QString::number(Espessura) + u'>';
}

void Html::Italico()
{
    appendLine(u"<I>"_s);
}

void Html::xItalico()
{
    appendLine(u"</I>"_s);
}

void Html::listaDefinicao()
{
    appendLine(u"<DL>"_s);
}

void Html::xlistaDefinicao()
{
    appendLine(u"</DL>"_s);
}

void Html::termoDL()
{
    appendLine(u"<DT>"_s);
}

void Html::defineDL()
{
    appendLine(u"<DD>"_s);
}

void Html::LogoTipo(const QString &Imagem, const QString &Texto1, const QString &Texto2)
{
    Borda(true, 0, QString());
    BordaLinha();
    BordaColuna(0, QString(), QString());
    Img(Imagem, 0, 0);
    BordaColuna(0, QString(), QString());
    Negrito();
    Italico();
    Alinhamento(0);
    Font(u"4"_s);
    Txt(Texto1, false);
    xFont();
    xItalico();
    xNegrito();
    Font(u"1"_s);
    Pula_Linha(1);
    xFont();
    Font(u"3"_s);
    Txt(Texto2, false);
    xFont();
    xAlinhamento(0);
    xBordaColuna(); // the cell of the texts, then that of the picture
    xBordaColuna();
    xBordaLinha();
    xBorda();
    Traça_Linha(1);
}

} // namespace quorel
