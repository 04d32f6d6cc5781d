// Films to lay menus out for.
#pragma once

#include <string>

#include "menu/menu_offer.h"

namespace quorvelant {

struct OfferShape {
  int Audio = 0;
  int Subtitles = 0;
  int Chapters = 0;
  bool IsNtsc = false;
  bool IsWide = false;
};

// Every stream and chapter has the film's name as its own where `named`.
inline FilmOffer FilmOf(const OfferShape& shape, const std::string& name, bool named = false) {
  FilmOffer film;
  film.Name = name;
  film.IsNtsc = shape.IsNtsc;
  film.IsWide = shape.IsWide;
  for (int i = 1; i <= shape.Audio; ++i) {
    film.Audio.push_back({i, named ? name : "English", "Normal"});
  }
  for (int i = 1; i <= shape.Subtitles; ++i) {
    film.Subtitles.push_back({i, named ? name : "German", "Normal"});
  }
  for (int i = 0; i < shape.Chapters; ++i) {
    film.Chapters.push_back({static_cast<std::size_t>(i), i * 1000, named ? name : ""});
  }
  return film;
}

}  // namespace quorvelant
