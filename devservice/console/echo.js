// How long an app's drawing takes to be in a picture that was taken after it came.
const RETURN_MS = 1000;
// The app takes its drawing away after this.
const GONE_MS = 5000;
const LOST_MS = 15000;

/** Whether a drawing that went out is to be seen in the pictures that come back by now. */
export class Echo {
  #number;
  #sentAt;
  #deliveredAt = null;
  #picture = 0;

  /** `number` is the message's, 0 while the service has not said it. */
  constructor(now) {
    this.#sentAt = now;
    this.#number = 0;
  }

  set number(number) {
    this.#number = number;
  }

  /** `picture` is the number of the picture on view. */
  isBack(delivered, picture, now) {
    if (this.#deliveredAt === null && this.#number > 0 && delivered >= this.#number) {
      this.#deliveredAt = now;
      this.#picture = picture;
    }
    if (this.#deliveredAt === null) return now - this.#sentAt > LOST_MS;
    const since = now - this.#deliveredAt;
    return (since > RETURN_MS && picture > this.#picture) || since > GONE_MS;
  }
}
