#pragma once

/// An owning, singly linked list with one built-in cursor: the rows of a table, the attributes of a row. Elements come
/// from new and are deleted with the list.
template <typename T>
class VexList
{
public:
    VexList() = default;
    VexList(const VexList&) = delete;
    VexList& operator=(const VexList&) = delete;
    ~VexList() { clear(); }

    /// Appends element, which the list owns from now on. The cursor stays where it is.
    void add(T* element)
    {
        auto* const node = new Node{element, nullptr};
        if (tail_ == nullptr)
            head_ = node;
        else
            tail_->next = node;
        tail_ = node;
    }

    /// Puts the cursor before the first element.
    void reset() { cursor_ = nullptr; }

    /// Moves the cursor to the next element and returns it. At the end it returns null and leaves the cursor alone, so
    /// that an element added later is found by a later call of the same pass.
    T* getNext()
    {
        Node* next = cursor_ == nullptr ? head_ : cursor_->next;
        if (next == nullptr)
            return nullptr;
        cursor_ = next;
        return next->element;
    }

    /// Calls visit(element) for every element in order; the cursor is neither used nor moved.
    template <typename Visit>
    void forEach(Visit visit) const
    {
        for (const Node* node = head_; node != nullptr; node = node->next)
            visit(*node->element);
    }

private:
    struct Node {
        T* element;
        Node* next;
    };

    void clear()
    {
        while (head_ != nullptr) {
            Node* next = head_->next;
            delete head_->element;
            delete head_;
            head_ = next;
        }
        tail_ = nullptr;
        cursor_ = nullptr;
    }

    Node* head_ = nullptr;
    Node* tail_ = nullptr;
    Node* cursor_ = nullptr;
};
