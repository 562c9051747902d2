// The dialogs that the gallery shows, and the states in which it shows them: what a page's code
// would set, so that a dialog can be looked at before there is a page.
#pragma once

#include <windows.h>

#include <utility>
#include <vector>

namespace ostrel {

struct DialogState {
  const wchar_t* name;
  std::vector<int> hidden = {};
  std::vector<int> checked = {};
  std::vector<int> disabled = {};
  std::vector<int> icons = {};                   // shown
  std::vector<std::pair<int, int>> rows = {};    // control and its selected row, unless the first
  std::vector<std::pair<int, UINT>> texts = {};  // control and string, unless the template's
  std::vector<std::pair<int, const wchar_t*>> boxes = {};  // unless the dialog's
  std::vector<std::pair<int, WORD>> pictures = {};         // control and bitmap
  std::vector<std::pair<int, WORD>> drawn = {};            // the same for owner-drawn controls
};

struct DialogStates {
  WORD id;
  UINT title;
  bool modal = false;  // a dialog of its own, and else a page of a property sheet
  std::vector<std::pair<int, std::vector<UINT>>> lists = {};  // control and the strings of its rows
  std::vector<std::pair<int, const wchar_t*>> boxes = {};
  std::vector<DialogState> states = {};
};

std::vector<DialogStates> AllDialogs();

}  // namespace ostrel
