#ifndef ZEQT4EXT_QZEDOMDOCUMENTWRITER_H
#define ZEQT4EXT_QZEDOMDOCUMENTWRITER_H

#include <QDomDocument>
#include <QString>

class QZEDomDocumentWriter
{
public:
    // The document as text: an XML declaration (version 1.0, UTF-8) first unless the document
    // has its own, then the nodes indented by 4 spaces per level, ending with a newline.
    static QString toString(const QDomDocument& document);
};

#endif
