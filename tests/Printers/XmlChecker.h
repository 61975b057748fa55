#ifndef XmlChecker_h
#define XmlChecker_h

#include <cctype>
#include <string>
#include <vector>

// Checks that the text is one well-formed XML element (tags nested and closed,
// attributes quoted, references well-formed, UTF-8 characters XML allows) and
// that MathML's layout elements hold what they must: two elements in mfrac,
// msup and mroot, elements only (no text) in mrow, mfrac, msup, msqrt, mroot.
class XmlChecker {
public:
    bool Check(const std::string& text, std::string& why) {
        m_text = text;
        m_at = 0;
        m_open.clear();
        bool root = false;
        while (m_at < m_text.size()) {
            const char c = m_text[m_at];
            if (c == '<') {
                if (root && m_open.empty()) return Fail("a second root element", why);
                if (!Tag(why)) return false;
                root = true;
            } else {
                if (m_open.empty() && !std::isspace(static_cast<unsigned char>(c)))
                    return Fail("text outside the root", why);
                if (!m_open.empty() && !std::isspace(static_cast<unsigned char>(c)) && HoldsElementsOnly(m_open.back().name))
                    return Fail("text inside <" + m_open.back().name + ">", why);
                if (!Character(why)) return false;
            }
        }
        if (!m_open.empty()) return Fail("<" + m_open.back().name + "> not closed", why);
        return root || Fail("no element", why);
    }

private:
    struct Open {
        std::string name;
        int children;
    };

    static bool HoldsElementsOnly(const std::string& name) {
        return name == "mrow" || name == "mfrac" || name == "msup" || name == "msqrt" || name == "mroot" ||
               name == "math" || name == "equations";
    }

    bool Fail(const std::string& what, std::string& why) {
        why = what + " at " + std::to_string(m_at) + ": " + m_text.substr(m_at > 60 ? m_at - 60 : 0, 120);
        return false;
    }

    std::string Name() {
        const size_t first = m_at;
        while (m_at < m_text.size() && (std::isalnum(static_cast<unsigned char>(m_text[m_at])) || m_text[m_at] == ':'))
            ++m_at;
        return m_text.substr(first, m_at - first);
    }

    void Spaces() {
        while (m_at < m_text.size() && std::isspace(static_cast<unsigned char>(m_text[m_at]))) ++m_at;
    }

    bool Tag(std::string& why) {
        ++m_at;
        if (m_at < m_text.size() && m_text[m_at] == '/') {
            ++m_at;
            const std::string name = Name();
            if (m_open.empty() || m_open.back().name != name) return Fail("</" + name + "> does not close", why);
            if (m_at >= m_text.size() || m_text[m_at] != '>') return Fail("unfinished end tag", why);
            ++m_at;
            const Open closed = m_open.back();
            m_open.pop_back();
            const bool pair = name == "mfrac" || name == "msup" || name == "mroot";
            if (pair && closed.children != 2) return Fail("<" + name + "> without two elements", why);
            if (name == "msqrt" && closed.children < 1) return Fail("empty <msqrt>", why);
            return true;
        }
        const std::string name = Name();
        if (name.empty()) return Fail("a tag without a name", why);
        if (!m_open.empty()) ++m_open.back().children;
        for (;;) {
            Spaces();
            if (m_at >= m_text.size()) return Fail("unfinished tag", why);
            if (m_text[m_at] == '>') {
                ++m_at;
                m_open.push_back({name, 0});
                return true;
            }
            if (m_text.compare(m_at, 2, "/>") == 0) {
                m_at += 2;
                return true;
            }
            if (Name().empty()) return Fail("an attribute without a name", why);
            if (m_at + 1 >= m_text.size() || m_text[m_at] != '=' || m_text[m_at + 1] != '"')
                return Fail("an attribute without a quoted value", why);
            m_at += 2;
            while (m_at < m_text.size() && m_text[m_at] != '"') {
                if (m_text[m_at] == '<') return Fail("< in an attribute", why);
                if (!Character(why)) return false;
            }
            if (m_at >= m_text.size()) return Fail("unfinished attribute", why);
            ++m_at;
        }
    }

    // One character of text: a reference, or a UTF-8 character XML allows.
    bool Character(std::string& why) {
        const auto lead = static_cast<unsigned char>(m_text[m_at]);
        if (lead == '&') {
            const size_t end = m_text.find(';', m_at);
            if (end == std::string::npos) return Fail("unfinished reference", why);
            const std::string name = m_text.substr(m_at + 1, end - m_at - 1);
            const bool entity = name == "amp" || name == "lt" || name == "gt" || name == "quot" || name == "apos";
            const bool hex = name.size() > 2 && name.compare(0, 2, "#x") == 0 &&
                             name.find_first_not_of("0123456789abcdefABCDEF", 2) == std::string::npos;
            if (!entity && !hex) return Fail("bad reference &" + name + ";", why);
            m_at = end + 1;
            return true;
        }
        if (lead < 0x20 && lead != '\n' && lead != '\t' && lead != '\r') return Fail("a control character", why);
        const int length = lead < 0x80 ? 1 : lead >= 0xC2 && lead < 0xE0 ? 2 : lead >= 0xE0 && lead < 0xF0 ? 3
                                                                   : lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
        if (length == 0 || m_at + static_cast<size_t>(length) > m_text.size()) return Fail("not UTF-8", why);
        for (int i = 1; i < length; ++i)
            if ((static_cast<unsigned char>(m_text[m_at + static_cast<size_t>(i)]) & 0xC0) != 0x80)
                return Fail("not UTF-8", why);
        m_at += static_cast<size_t>(length);
        return true;
    }

    std::string m_text;
    size_t m_at = 0;
    std::vector<Open> m_open;
};

#endif
