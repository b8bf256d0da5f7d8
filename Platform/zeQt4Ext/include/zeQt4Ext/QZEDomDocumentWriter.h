#ifndef ZEQT4EXT_QZEDOMDOCUMENTWRITER_H
#define ZEQT4EXT_QZEDOMDOCUMENTWRITER_H

#include <QDomDocument>
#include <QString>

class QZEDomDocumentWriter
{
public:
    // The document as text, the same bytes for the same document in every run: an XML
    // declaration (version 1.0, UTF-8) first unless the document has its own, then one node per
    // line, indented by 4 spaces per level, ending with a newline. An element's attributes are
    // written in the order of their names (the DOM keeps them in a hash, whose order changes from
    // run to run). In attribute values, & < > " and tab, line feed and carriage return are
    // written as references; characters that XML 1.0 cannot carry at all (other control
    // characters, unpaired surrogates, U+FFFE and U+FFFF) become U+FFFD, so the text always
    // parses back.
    static QString toString(const QDomDocument& document);
};

#endif
