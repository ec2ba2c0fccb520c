#include "siblingpairing.h"

SiblingPairing::SiblingPairing(QList<Item> olds, QList<Item> news)
    : m_olds(std::move(olds)), m_news(std::move(news)), m_oldTaken(m_olds.size(), false),
      m_newTaken(m_news.size(), false)
{}

bool SiblingPairing::accepts(Rule rule, const Item& o, const Item& n)
{
    switch (rule) {
    case Rule::Caption:
        return !o.unnamed && !n.unnamed && o.caption == n.caption;
    case Rule::UnnamedContent:
        return o.unnamed && n.unnamed && o.content == n.content;
    case Rule::UnnamedCaption:
        return o.unnamed && n.unnamed && o.caption == n.caption;
    case Rule::Content:
        return o.content == n.content;
    case Rule::UnnamedInOrder:
        return o.unnamed && n.unnamed;
    }
    return false;
}

QList<std::pair<qsizetype, qsizetype>> SiblingPairing::Pair(Rule rule)
{
    QList<std::pair<qsizetype, qsizetype>> pairs;
    for (qsizetype j = 0; j < m_news.size(); ++j) {
        if (m_newTaken[j])
            continue;
        for (qsizetype i = 0; i < m_olds.size(); ++i) {
            if (m_oldTaken[i] || !accepts(rule, m_olds[i], m_news[j]))
                continue;
            m_oldTaken[i] = m_newTaken[j] = true;
            pairs.append({i, j});
            break;
        }
    }
    return pairs;
}
