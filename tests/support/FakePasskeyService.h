#pragma once

#include "async/Event.h"
#include "desktop/PasskeyService.h"

#include <boost/asio/this_coro.hpp>

#include <functional>
#include <optional>

namespace palvera {

/// A security key whose user does what the test says.
class FakePasskeyService final : public PasskeyService {
public:
    bool present = false;
    int looks = 0;
    std::vector<PasskeyRequest> requests;
    std::vector<QByteArray> pins;
    std::vector<int> accounts;

    bool isPresent() const override { return present; }
    void look() override { ++looks; }
    Task<PasskeyAnswer> assertion(PasskeyRequest request) override
    {
        requests.push_back(std::move(request));
        Event over(co_await boost::asio::this_coro::executor);
        m_over = &over;
        co_await over.wait();
        m_over = nullptr;
        ask({});
        if (m_failure)
            std::rethrow_exception(std::exchange(m_failure, nullptr));
        co_return *std::exchange(m_answer, std::nullopt);
    }
    const PasskeyPrompt& prompt() const override { return m_prompt; }
    void enterPin(Pin pin) override { pins.emplace_back(pin.text()); }
    void choose(int account) override { accounts.push_back(account); }
    void cancel() override { fail(PasskeyCancelled()); }

    void plug(bool isIn)
    {
        present = isIn;
        Q_EMIT presentChanged();
    }
    void ask(const PasskeyPrompt& prompt)
    {
        m_prompt = prompt;
        Q_EMIT promptChanged();
    }
    void answer(PasskeyAnswer answer)
    {
        m_answer = std::move(answer);
        m_over->set();
    }
    template <class Failure>
    void fail(const Failure& failure)
    {
        m_failure = std::make_exception_ptr(failure);
        m_over->set();
    }

private:
    Event* m_over = nullptr;
    PasskeyPrompt m_prompt;
    std::optional<PasskeyAnswer> m_answer;
    std::exception_ptr m_failure;
};

} // namespace palvera
