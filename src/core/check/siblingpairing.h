#pragma once

#include <QList>
#include <QString>

#include <utility>

// Pairs the boxes of one sibling group of an old document with those of a new one, rule by
// rule, each box at most once. Every rule goes through the new boxes in their order and gives
// each the first free old box it accepts, so that boxes of the same caption pair up in order.
class SiblingPairing
{
public:
    struct Item
    {
        QString caption;
        // The caption names nothing the user chose (the reader made it up, or it is empty).
        bool unnamed = false;
        // Everything the box holds apart from its own caption and its numbers.
        QString content;
    };

    enum class Rule {
        Caption,        // two named boxes of the same caption
        UnnamedContent, // two unnamed boxes of the same content
        UnnamedCaption, // two unnamed boxes of the same made-up caption
        Content,        // any two of the same content: one box renamed
        UnnamedInOrder, // what unnamed boxes are left, in order
    };

    SiblingPairing(QList<Item> olds, QList<Item> news);

    // Pairs what the rule accepts among the boxes still free; returns the new pairs
    // (old index, new index) in the order of the new boxes.
    QList<std::pair<qsizetype, qsizetype>> Pair(Rule rule);
    bool OldPaired(qsizetype i) const { return m_oldTaken[i]; }
    bool NewPaired(qsizetype j) const { return m_newTaken[j]; }

private:
    static bool accepts(Rule rule, const Item& o, const Item& n);

    QList<Item> m_olds;
    QList<Item> m_news;
    QList<bool> m_oldTaken;
    QList<bool> m_newTaken;
};
