#include "ui/form_list.h"

#include <algorithm>

#include "ui/pump.h"

namespace quillon::ui {

namespace {

std::vector<std::shared_ptr<Form>>& List() {
    static std::vector<std::shared_ptr<Form>> list;
    return list;
}

auto PlaceOf(const Form* form) {
    return std::find_if(List().begin(), List().end(),
                        [&](const std::shared_ptr<Form>& one) { return one.get() == form; });
}

}  // namespace

void Form::Open() {
    if (!IsOpen()) List().push_back(shared_from_this());
}

bool Form::IsOpen() const {
    return PlaceOf(this) != List().end();
}

void Form::Unload() {
    const auto place = PlaceOf(this);
    if (place == List().end()) return;
    const std::shared_ptr<Form> self = *place;
    List().erase(place);
    Close();
}

std::shared_ptr<Form> FindForm(const std::function<bool(const Form&)>& matches) {
    for (const std::shared_ptr<Form>& form : OpenForms()) {
        PumpMessages();
        // What compares may handle messages, too.
        if (form->IsOpen() && matches(*form) && form->IsOpen()) return form;
    }
    return nullptr;
}

std::vector<std::shared_ptr<Form>> OpenForms() {
    return List();
}

}  // namespace quillon::ui
