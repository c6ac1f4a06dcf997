// The model of a view, by its class. Every operation of a control asks for it, so it has to be quick.
#pragma once

#include <typeinfo>

#include <QtWidgets/QAbstractItemView>

namespace vm {

/// Null when the view is null or shows another class's model; derived classes are others.
template <class Model>
Model* ModelOf(const QAbstractItemView* view) {
    QAbstractItemModel* const model = view ? view->model() : nullptr;
    return model && typeid(*model) == typeid(Model) ? static_cast<Model*>(model) : nullptr;
}

} // namespace vm
