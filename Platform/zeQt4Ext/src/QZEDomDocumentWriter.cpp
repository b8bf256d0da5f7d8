#include <zeQt4Ext/QZEDomDocumentWriter.h>

#include <QDomNamedNodeMap>
#include <QDomNode>
#include <QDomProcessingInstruction>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

const QChar kReplacement(0xFFFD);

bool isXmlControl(ushort c)
{
    return c < 0x20 && c != 0x9 && c != 0xA && c != 0xD;
}

// Appends `text` escaped for an attribute value (quoted with ") or for character data.
void appendEscaped(QString& out, const QString& text, bool attribute)
{
    const int n = text.size();
    for (int i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        const ushort u = c.unicode();
        if (c.isHighSurrogate() && i + 1 < n && text.at(i + 1).isLowSurrogate()) {
            out.append(c);
            out.append(text.at(++i));
            continue;
        }
        if (c.isSurrogate() || u == 0xFFFE || u == 0xFFFF || isXmlControl(u)) {
            out.append(kReplacement);
            continue;
        }
        switch (u) {
        case '&':
            out.append(QLatin1String("&amp;"));
            break;
        case '<':
            out.append(QLatin1String("&lt;"));
            break;
        case '>':
            out.append(QLatin1String("&gt;"));
            break;
        case '"':
            out.append(attribute ? QLatin1String("&quot;") : QLatin1String("\""));
            break;
        case '\t':
            out.append(attribute ? QLatin1String("&#x9;") : QLatin1String("\t"));
            break;
        case '\n':
            out.append(attribute ? QLatin1String("&#xa;") : QLatin1String("\n"));
            break;
        case '\r':
            out.append(QLatin1String("&#xd;"));
            break;
        default:
            out.append(c);
            break;
        }
    }
}

void writeNode(QString& out, const QDomNode& node, int depth);

void writeElement(QString& out, const QDomElement& element, int depth)
{
    out.append(QString(depth * 4, QLatin1Char(' ')));
    out.append(QLatin1Char('<')).append(element.tagName());
    const QDomNamedNodeMap attributes = element.attributes();
    std::vector<std::pair<QString, QString>> sorted;
    sorted.reserve(static_cast<std::size_t>(attributes.count()));
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomAttr attribute = attributes.item(i).toAttr();
        sorted.emplace_back(attribute.name(), attribute.value());
    }
    std::sort(sorted.begin(), sorted.end());
    for (const std::pair<QString, QString>& attribute : sorted) {
        out.append(QLatin1Char(' ')).append(attribute.first).append(QLatin1String("=\""));
        appendEscaped(out, attribute.second, true);
        out.append(QLatin1Char('"'));
    }
    const QDomNodeList children = element.childNodes();
    if (children.isEmpty()) {
        out.append(QLatin1String("/>\n"));
        return;
    }
    if (children.count() == 1 && children.at(0).isText() && !children.at(0).isCDATASection()) {
        out.append(QLatin1Char('>'));
        appendEscaped(out, children.at(0).toText().data(), false);
        out.append(QLatin1String("</")).append(element.tagName()).append(QLatin1String(">\n"));
        return;
    }
    out.append(QLatin1String(">\n"));
    for (int i = 0; i < children.count(); ++i)
        writeNode(out, children.at(i), depth + 1);
    out.append(QString(depth * 4, QLatin1Char(' ')));
    out.append(QLatin1String("</")).append(element.tagName()).append(QLatin1String(">\n"));
}

void writeNode(QString& out, const QDomNode& node, int depth)
{
    if (node.isElement()) {
        writeElement(out, node.toElement(), depth);
        return;
    }
    const QString indent(depth * 4, QLatin1Char(' '));
    if (node.isCDATASection()) {
        out.append(indent).append(QLatin1String("<![CDATA[")).append(node.toCDATASection().data());
        out.append(QLatin1String("]]>\n"));
    } else if (node.isText()) {
        out.append(indent);
        appendEscaped(out, node.toText().data(), false);
        out.append(QLatin1Char('\n'));
    } else if (node.isComment()) {
        out.append(indent).append(QLatin1String("<!--")).append(node.toComment().data());
        out.append(QLatin1String("-->\n"));
    } else if (node.isProcessingInstruction()) {
        const QDomProcessingInstruction instruction = node.toProcessingInstruction();
        out.append(indent).append(QLatin1String("<?")).append(instruction.target());
        if (!instruction.data().isEmpty())
            out.append(QLatin1Char(' ')).append(instruction.data());
        out.append(QLatin1String("?>\n"));
    } else if (node.isDocumentType()) {
        const QDomDocumentType type = node.toDocumentType();
        out.append(QLatin1String("<!DOCTYPE ")).append(type.name());
        if (!type.publicId().isEmpty())
            out.append(QLatin1String(" PUBLIC \"")).append(type.publicId()).append(QLatin1String("\" \""));
        else if (!type.systemId().isEmpty())
            out.append(QLatin1String(" SYSTEM \""));
        if (!type.publicId().isEmpty() || !type.systemId().isEmpty())
            out.append(type.systemId()).append(QLatin1Char('"'));
        out.append(QLatin1String(">\n"));
    }
}

} // namespace

QString QZEDomDocumentWriter::toString(const QDomDocument& document)
{
    QString text;
    const QDomNode first = document.firstChild();
    const bool hasDeclaration =
        first.isProcessingInstruction() && first.toProcessingInstruction().target() == QLatin1String("xml");
    if (!hasDeclaration)
        text.append(QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"));
    // The document type is not among the document's child nodes in Qt's DOM.
    const QDomDocumentType type = document.doctype();
    bool typeWritten = type.isNull() || type.name().isEmpty();
    for (QDomNode node = document.firstChild(); !node.isNull(); node = node.nextSibling()) {
        if (!typeWritten && !(node.isProcessingInstruction() && node == first && hasDeclaration)) {
            writeNode(text, type, 0);
            typeWritten = true;
        }
        if (!node.isDocumentType())
            writeNode(text, node, 0);
    }
    if (!typeWritten)
        writeNode(text, type, 0);
    return text;
}
