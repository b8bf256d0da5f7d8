#include <zeQt4Ext/QZEDomDocumentWriter.h>

#include <QDomNode>
#include <QDomProcessingInstruction>

QString QZEDomDocumentWriter::toString(const QDomDocument& document)
{
    QDomNode first = document.firstChild();
    bool hasDeclaration =
        first.isProcessingInstruction() && first.toProcessingInstruction().target() == "xml";
    QString text = document.toString(4);
    if (!hasDeclaration)
        text.prepend(QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"));
    if (!text.endsWith('\n'))
        text.append('\n');
    return text;
}
