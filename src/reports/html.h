#pragma once

#include <QString>
#include <QVariant>

namespace quorel {

/// Builds one HTML document as a text in memory. Every operation appends to its end; nothing is escaped and no tag is
/// matched against another. Operations with an x close what the one of that name opens. Lines end in CR LF; the ones
/// that end no line say so.
class Html final
{
public:
    QString html() const { return mHtml; } ///< the property Html: the text so far
    void html(const QVariant &Valor); ///< replaces it

    void Pula_Linha(qint16 Quantas); ///< "<BR>" so often; nothing below 1
    /// Begins a document: throws away what was there. @param CorFundo  used as text, "#FFFFFF"
    void InicializaHtml(const QString &Titulo, const QVariant &CorFundo);
    void FinalizaHtml(); ///< ends no line
    void Negrito();
    void xNegrito();
    void Desenha_Linha();
    /// Opens a table. @param Largura  empty for none
    void Borda(bool Centralizada, qint16 Espessura, const QString &Largura);
    void BordaLinha(); ///< a row
    /// Opens a cell. @param Alinhamento  0 centre, 1 right, 2 left: not the numbers of Alinhamento()
    /// @param Largura,Colunas  width and span; empty for none @throws ErroExecucao 9 for another number; then nothing
    /// is appended
    void BordaColuna(qint32 Alinhamento, const QString &Largura, const QString &Colunas);
    void xBorda();
    void xBordaLinha();
    void xBordaColuna();
    void Alinhamento(qint32 Tipo); ///< opens a block: 0 centre, 1 left, 2 right; a line end alone for another number
    void xAlinhamento(qint32 Tipo); ///< ends no line; the number is not looked at
    void Txt(const QString &Texto, bool Quebra); ///< CR LF becomes "<BR>". @param Quebra  one more "<BR>" behind it
    /// A picture. @param Altura,Largura  left out unless above 0; the width is written before the height
    void Img(const QString &Origem, float Altura, float Largura);
    void Font(const QString &Tamanho);
    void xFont();
    void Traça_Linha(qint16 Espessura); ///< ends no line
    void Italico();
    void xItalico();
    void listaDefinicao();
    void xlistaDefinicao();
    void termoDL();
    void defineDL();
    /// The head of a page: a picture and beside it two texts, a line below them. Ends no line.
    void LogoTipo(const QString &Imagem, const QString &Texto1, const QString &Texto2);

private:
    void appendLine(const QString &text);

    QString mHtml;
};

} // namespace quorel
