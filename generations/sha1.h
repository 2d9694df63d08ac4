#pragma once
// One SHA-1 over several pieces, as git names its objects and checks its packs.

#include <array>
#include <memory>
#include <string_view>

struct evp_md_ctx_st;

namespace tsaw::generations {

// A git object id: 20 bytes of SHA-1.
using TObjectId = std::array<unsigned char, 20>;

class TSha1 {
 public:
  TSha1();
  ~TSha1();
  TSha1(const TSha1&) = delete;
  TSha1& operator=(const TSha1&) = delete;

  void Update(std::string_view bytes);
  // The sum of everything given since the sum was made or restarted.
  TObjectId Final();
  void Restart();

 private:
  struct TFree {
    void operator()(evp_md_ctx_st* context) const;
  };
  std::unique_ptr<evp_md_ctx_st, TFree> context_;
};

}  // namespace tsaw::generations
