#include "generations/sha1.h"

#include <openssl/evp.h>

#include <stdexcept>

namespace tsaw::generations {

void TSha1::TFree::operator()(evp_md_ctx_st* context) const { EVP_MD_CTX_free(context); }

TSha1::TSha1() : context_(EVP_MD_CTX_new()) { Restart(); }

TSha1::~TSha1() = default;

void TSha1::Restart() {
  if (!context_ || EVP_DigestInit_ex(context_.get(), EVP_sha1(), nullptr) != 1) {
    throw std::runtime_error("SHA-1 is not available");
  }
}

void TSha1::Update(std::string_view bytes) { EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()); }

TObjectId TSha1::Final() {
  TObjectId id{};
  EVP_DigestFinal_ex(context_.get(), id.data(), nullptr);
  return id;
}

}  // namespace tsaw::generations
