#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>

namespace quorel::teste {

/// A page like those of the sheet.
inline QByteArray sheetPage(int rows)
{
    QByteArray page = "<HTML> \r\n<BODY bgcolor=#FFFFFF>\r\n<TABLE BORDER=1 ALIGN=CENTER>\r\n<TR>\r\n";
    for (int i = 1; i <= rows; ++i)
        page += "<TD ALIGN=LEFT WIDTH=18>\r\n24/11/26\r\n</TD>\r\n<TD ALIGN=LEFT WIDTH=400>\r\nRoteiro n\xba "
            + QByteArray::number(i)
            + "\r\n</TD>\r\n<TD ALIGN=CENTER>\r\n12\r\n</TD>\r\n<TD ALIGN=CENTER>\r\n3\r\n</TD>"
              "\r\n</TR>\r\n<TR>\r\n";
    return page + "</TR>\r\n</TABLE>\r\n</BODY></HTML>";
}

/// How many pixels of a picture have a colour.
inline int pixelsOf(const QImage &image, const QColor &colour)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += image.pixelColor(x, y) == colour;
    return n;
}

} // namespace quorel::teste
