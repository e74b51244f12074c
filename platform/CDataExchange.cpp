#include "platform/CDataExchange.h"

#include <charconv>
#include <stdexcept>
#include <string_view>

#include "platform/CButton.h"
#include "platform/CComboBox.h"
#include "platform/CDialog.h"
#include "platform/CEdit.h"
#include "platform/Text.h"
#include "platform/UserInterface.h"

namespace {

bool IsBinding(const CDataExchange* exchange) {
    return exchange->m_Mode == CDataExchange::Mode::Bind;
}
bool IsSaving(const CDataExchange* exchange) {
    return exchange->m_Mode == CDataExchange::Mode::Save;
}

template <class T>
T& Find(CDataExchange* exchange, int id) {
    auto* const control = dynamic_cast<T*>(exchange->m_Dialog.GetDlgItem(id));
    if (!control)
        throw std::logic_error(vesk::FormatText("the dialog has no such control: %d", id));
    exchange->m_LastId = id;
    return *control;
}

std::string_view WithoutBlanks(std::string_view text) {
    constexpr const char* kBlanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

// A whole number and nothing else.
template <class Number>
bool Parse(std::string_view text, Number& value) {
    text = WithoutBlanks(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    Number parsed = 0;
    const auto [stopped, error] = std::from_chars(text.data(), end, parsed);
    if (error != std::errc() || stopped != end) return false;
    value = parsed;
    return true;
}

template <class Number>
void ExchangeNumber(CDataExchange* exchange, int id, Number& value, const char* refusal) {
    if (IsBinding(exchange)) return;
    CWnd& control = Find<CWnd>(exchange, id);
    if (!IsSaving(exchange)) {
        control.SetWindowText(std::to_string(value));
    } else if (!Parse(control.GetWindowText().Str(), value)) {
        exchange->Fail(id, refusal);
    }
}

}  // namespace

void CDataExchange::Fail(int id, const CString& text) {
    AfxMessageBox(text, MB_ICONEXCLAMATION);
    if (CWnd* control = m_Dialog.GetDlgItem(id)) {
        control->SetFocus();
        if (auto* edit = dynamic_cast<CEdit*>(control)) edit->SetSel(0, -1);
    }
    throw Refusal();
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& member) {
    if (IsBinding(exchange)) exchange->m_Dialog.m_Bound.emplace_back(id, &member);
}

void DDX_Text(CDataExchange* exchange, int id, CString& value) {
    if (IsBinding(exchange)) return;
    CWnd& control = Find<CWnd>(exchange, id);
    if (IsSaving(exchange)) {
        value = control.GetWindowText();
    } else {
        control.SetWindowText(value);
    }
}

void DDX_Text(CDataExchange* exchange, int id, std::int32_t& value) {
    ExchangeNumber(exchange, id, value, "Please enter an integer.");
}

void DDX_Text(CDataExchange* exchange, int id, std::uint64_t& value) {
    ExchangeNumber(exchange, id, value, "Please enter a positive integer.");
}

void DDX_Radio(CDataExchange* exchange, int id, std::int32_t& value) {
    if (IsBinding(exchange)) return;
    const std::vector<CButton*> choice = vesk::ChoiceOf(Find<CButton>(exchange, id));
    if (IsSaving(exchange)) value = -1;
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(choice.size()); ++i) {
        CButton& button = *choice[static_cast<std::size_t>(i)];
        if (!IsSaving(exchange)) {
            button.SetCheck(i == value ? 1 : 0);
        } else if (value == -1 && button.GetCheck() != 0) {
            value = i;
        }
    }
}

void DDX_Check(CDataExchange* exchange, int id, std::int32_t& value) {
    if (IsBinding(exchange)) return;
    CButton& button = Find<CButton>(exchange, id);
    if (IsSaving(exchange)) {
        value = button.GetCheck();
    } else {
        button.SetCheck(value != 0 ? 1 : 0);
    }
}

void DDX_CBIndex(CDataExchange* exchange, int id, std::int32_t& value) {
    if (IsBinding(exchange)) return;
    CComboBox& combo = Find<CComboBox>(exchange, id);
    if (IsSaving(exchange)) {
        value = combo.GetCurSel();
    } else {
        combo.SetCurSel(value);
    }
}

void DDV_MinMaxInt(CDataExchange* exchange, std::int32_t value, std::int32_t min,
                   std::int32_t max) {
    if (!IsSaving(exchange) || (value >= min && value <= max)) return;
    exchange->Fail(exchange->m_LastId,
                   vesk::FormatText("Please enter an integer between %d and %d.", min, max));
}
